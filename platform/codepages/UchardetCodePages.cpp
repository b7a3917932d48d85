// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codepages/UchardetCodePages.h"

#include <uchardet.h>

#include <memory>
#include <type_traits>

namespace platform::codepages {
namespace {

struct Deleter {
  void operator()(uchardet_t detector) const { uchardet_delete(detector); }
};

}  // namespace

std::string UchardetCodePages::Guess(std::string_view text) {
  const std::unique_ptr<std::remove_pointer_t<uchardet_t>, Deleter> detector(uchardet_new());
  if (detector == nullptr || text.empty()) return "";
  if (uchardet_handle_data(detector.get(), text.data(), text.size()) != 0) return "";
  uchardet_data_end(detector.get());
  return uchardet_get_charset(detector.get());
}

}  // namespace platform::codepages
