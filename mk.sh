#!/bin/bash
# compile & link shots
cd /work/wt/window/build/ci
F=$(ninja -t commands ui_tests | grep 'ui_tests.dir/Unity/unity_0' | head -1 | sed 's/ -MD.*//')
for f in /tmp/w/Shots.cpp /work/wt/window/ui/tests/Booth.cpp /work/wt/window/ui/tests/Main.cpp; do
 o=/tmp/w/$(basename $f .cpp).o; [ $o -nt $f ] || $F -w -O0 -c $f -o $o || exit 1; done
L=$(ninja -t commands ui_tests | tail -1 | sed 's/^: && //; s/ && :$//; s#ui/CMakeFiles/ui_tests.dir/[^ ]*##g; s#-o bin/ui_tests#/tmp/w/Shots.o /tmp/w/Booth.o /tmp/w/Main.o -o /tmp/w/shots#')
eval $L
