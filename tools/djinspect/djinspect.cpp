// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "tools/djinspect/verbs/Verbs.h"

/// Prints what the program's readers make of a file, for people and for scripts.
int main(int argc, char** argv) {
  try {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return static_cast<int>(tools::djinspect::Run(arguments, std::cout, std::cerr));
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return static_cast<int>(tools::djinspect::ExitCode::NothingRead);
  }
}
