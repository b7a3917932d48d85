// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

namespace {
std::string calls;
int boards_left = 0;
int boards_there = 0;
}  // namespace

// The maker's calls as far as they are used, one that sets how many boards there are, and one that tells
// which calls came.
extern "C" {
__declspec(dllexport) int __stdcall OpenDevice() {
  calls += "OpenDevice;";
  return boards_left > 0 ? boards_there - boards_left-- : -1;
}
__declspec(dllexport) void __stdcall CloseDevices() {
  calls += "CloseDevices;";
  boards_left = boards_there;
}
__declspec(dllexport) void __stdcall OutputAllDigital(int board, int data) {
  calls += "OutputAllDigital " + std::to_string(board) + " " + std::to_string(data) + ";";
}
__declspec(dllexport) void __stdcall ClearAllDigital(int board) {
  calls += "ClearAllDigital " + std::to_string(board) + ";";
}
__declspec(dllexport) void __stdcall OutputAnalogChannel(int board, int channel, int data) {
  calls += "OutputAnalogChannel " + std::to_string(board) + " " + std::to_string(channel) + " " +
           std::to_string(data) + ";";
}
__declspec(dllexport) void __stdcall ClearAllAnalog(int board) {
  calls += "ClearAllAnalog " + std::to_string(board) + ";";
}
__declspec(dllexport) void SetBoards(int count) {
  calls.clear();
  boards_there = count;
  boards_left = count;
}
__declspec(dllexport) const char* TakenCalls() {
  return calls.c_str();
}
}
