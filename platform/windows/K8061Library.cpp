// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/K8061Library.h"

#include <windows.h>

#include <string>
#include <utility>

#include "support/Sentences.h"

namespace platform::windows {
namespace {

using Plain = void(__stdcall*)();
using Opening = int(__stdcall*)();
using OfBoard = void(__stdcall*)(int);
using OfBoardWithValue = void(__stdcall*)(int, int);
using OfChannel = void(__stdcall*)(int, int, int);

/// As many as jumpers can tell apart.
constexpr int kMostBoards = 8;

template <typename Function>
Function CallOf(HMODULE library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

support::Error LibraryTrouble(support::Sentence sentence, const std::filesystem::path& library) {
  return support::Failed(support::ErrorCode::Unavailable, sentence, {library.filename().string()});
}

}  // namespace

struct K8061LibraryLine::Calls {
  explicit Calls(HMODULE handle)
      : library(handle),
        open_device(CallOf<Opening>(handle, "OpenDevice")),
        close_devices(CallOf<Plain>(handle, "CloseDevices")),
        output_all_digital(CallOf<OfBoardWithValue>(handle, "OutputAllDigital")),
        clear_all_digital(CallOf<OfBoard>(handle, "ClearAllDigital")),
        output_analog_channel(CallOf<OfChannel>(handle, "OutputAnalogChannel")),
        clear_all_analog(CallOf<OfBoard>(handle, "ClearAllAnalog")) {}
  ~Calls() { FreeLibrary(library); }
  Calls(const Calls&) = delete;
  Calls& operator=(const Calls&) = delete;
  [[nodiscard]] bool Complete() const {
    return open_device && close_devices && output_all_digital && clear_all_digital && output_analog_channel &&
           clear_all_analog;
  }

  HMODULE library;
  Opening open_device;
  Plain close_devices;
  OfBoardWithValue output_all_digital;
  OfBoard clear_all_digital;
  OfChannel output_analog_channel;
  OfBoard clear_all_analog;
};

K8061LibraryLine::K8061LibraryLine(std::filesystem::path library) : path_(std::move(library)) {}

K8061LibraryLine::~K8061LibraryLine() = default;

bool K8061LibraryLine::Load() {
  if (calls_ != nullptr) return true;
  trouble_ = {};
  const HMODULE library = LoadLibraryW(path_.wstring().c_str());
  if (library == nullptr) {
    trouble_ = LibraryTrouble(GetLastError() == ERROR_BAD_EXE_FORMAT ? support::Sentence::BoxLibraryOtherKind
                                                                     : support::Sentence::BoardLibraryMissing,
                              path_);
    return false;
  }
  auto calls = std::make_unique<Calls>(library);
  if (!calls->Complete()) {
    trouble_ = LibraryTrouble(support::Sentence::BoardLibraryUnknown, path_);
    return false;
  }
  calls_ = std::move(calls);
  return true;
}

boards::BoardSet K8061LibraryLine::Look(Occasion occasion) {
  // Opening takes the library its time: only when somebody asks for it.
  if (occasion != Occasion::Asked || !Load()) return {};
  trouble_ = {};
  boards::BoardSet fresh;
  for (int i = 0; i < kMostBoards; ++i) {
    const int address = calls_->open_device();
    if (address < 0) break;
    if (address < static_cast<int>(boards::kBoards)) {
      fresh.set(static_cast<std::size_t>(address));
    } else {
      trouble_ = support::Failed(support::ErrorCode::Unsupported, support::Sentence::BoardOtherAddress,
                                 {std::to_string(address)});
    }
  }
  held_ |= fresh;
  if (held_.none() && trouble_.text.empty())
    trouble_ = support::Failed(support::ErrorCode::NotFound, support::Sentence::NoBoard);
  return fresh;
}

bool K8061LibraryLine::Switch(std::size_t board, std::uint8_t channels) {
  const int address = static_cast<int>(board);
  if (channels == 0) {
    calls_->clear_all_digital(address);
  } else {
    calls_->output_all_digital(address, channels);
  }
  return true;
}

bool K8061LibraryLine::Dim(std::size_t board, const boards::DimmedValues& values,
                           const boards::DimmedValues* before) {
  const int address = static_cast<int>(board);
  if (values == boards::DimmedValues{}) {
    calls_->clear_all_analog(address);
    return true;
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (before != nullptr && (*before)[i] == values[i]) continue;
    calls_->output_analog_channel(address, static_cast<int>(i) + 1, values[i]);
  }
  return true;
}

void K8061LibraryLine::Release() {
  if (calls_ == nullptr) return;
  calls_->close_devices();
  calls_.reset();
  held_.reset();
}

}  // namespace platform::windows
