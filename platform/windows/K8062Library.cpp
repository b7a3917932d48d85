// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/K8062Library.h"

#include <windows.h>

#include <utility>

#include "support/Sentences.h"

namespace platform::windows {
namespace {

using NoArguments = void(__stdcall*)();
using OneNumber = void(__stdcall*)(int);
using TwoNumbers = void(__stdcall*)(int, int);

template <typename Function>
Function Find(HMODULE library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

support::Error Trouble(support::Sentence sentence, const std::filesystem::path& library) {
  return support::Failed(support::ErrorCode::Unavailable, sentence, {library.filename().string()});
}

}  // namespace

struct K8062Library::Calls {
  explicit Calls(HMODULE handle)
      : library(handle),
        start_device(Find<NoArguments>(handle, "StartDevice")),
        set_channel_count(Find<OneNumber>(handle, "SetChannelCount")),
        set_data(Find<TwoNumbers>(handle, "SetData")),
        stop_device(Find<NoArguments>(handle, "StopDevice")) {}
  ~Calls() { FreeLibrary(library); }
  Calls(const Calls&) = delete;
  Calls& operator=(const Calls&) = delete;
  [[nodiscard]] bool Complete() const { return start_device && set_channel_count && set_data && stop_device; }

  HMODULE library;
  NoArguments start_device;
  OneNumber set_channel_count;
  TwoNumbers set_data;
  NoArguments stop_device;
};

K8062Library::K8062Library(std::filesystem::path library) : path_(std::move(library)) {}

K8062Library::~K8062Library() {
  StopDevice();
}

bool K8062Library::Load() {
  if (calls_ != nullptr) return true;
  trouble_ = {};
  const HMODULE library = LoadLibraryW(path_.wstring().c_str());
  if (library == nullptr) {
    trouble_ = Trouble(GetLastError() == ERROR_BAD_EXE_FORMAT ? support::Sentence::BoxLibraryOtherKind
                                                              : support::Sentence::BoxLibraryMissing,
                       path_);
    return false;
  }
  auto calls = std::make_unique<Calls>(library);
  if (!calls->Complete()) {
    trouble_ = Trouble(support::Sentence::BoxLibraryUnknown, path_);
    return false;
  }
  calls_ = std::move(calls);
  return true;
}

void K8062Library::StartDevice() {
  if (started_ || !Load()) return;
  started_ = true;
  calls_->start_device();
}

void K8062Library::SetChannelCount(int count) {
  if (started_) calls_->set_channel_count(count);
}

void K8062Library::SetData(int channel, dmx::DmxLevel level) {
  if (started_) calls_->set_data(channel, level);
}

void K8062Library::StopDevice() {
  if (!std::exchange(started_, false)) return;
  calls_->stop_device();
}

dmx::DmxInterfaceStatus K8062Library::Status() const {
  using State = dmx::DmxInterfaceStatus::State;
  dmx::DmxInterfaceStatus status;
  status.state = started_ ? State::Sending : trouble_.text.empty() ? State::Stopped : State::Searching;
  status.text = trouble_.text;
  status.saying = trouble_.saying;
  return status;
}

}  // namespace platform::windows
