// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FileFailure.h"

namespace app {
namespace {

using support::ErrorCode;
using support::Sentence;

Sentence SentenceOf(ErrorCode code) {
  switch (code) {
    case ErrorCode::NotFound:
      return Sentence::FileNotFound;
    case ErrorCode::Unreadable:
      return Sentence::FileUnreadable;
    case ErrorCode::Empty:
      return Sentence::FileEmpty;
    case ErrorCode::Malformed:
      return Sentence::FileMalformed;
    case ErrorCode::Unsupported:
      return Sentence::FileUnsupported;
    case ErrorCode::Unavailable:
    case ErrorCode::Cancelled:
      break;
  }
  return Sentence::FileUnavailable;
}

}  // namespace

std::string FileFailure(const support::Error& error, const std::string& path, const support::Sentences& say) {
  if (say.Base() == 0) return error.text;
  return say(SentenceOf(error.code), {path.substr(path.find_last_of("/\\") + 1)});
}

}  // namespace app
