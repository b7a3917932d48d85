// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

namespace {
std::string calls;
}

// The maker's four calls, and one that tells which of them came.
extern "C" {
__declspec(dllexport) void __stdcall StartDevice() {
  calls += "StartDevice;";
}
__declspec(dllexport) void __stdcall SetChannelCount(int count) {
  calls += "SetChannelCount " + std::to_string(count) + ";";
}
__declspec(dllexport) void __stdcall SetData(int channel, int data) {
  calls += "SetData " + std::to_string(channel) + " " + std::to_string(data) + ";";
}
__declspec(dllexport) void __stdcall StopDevice() {
  calls += "StopDevice;";
}
__declspec(dllexport) const char* TakenCalls() {
  return calls.c_str();
}
}
