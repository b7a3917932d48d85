// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/ports/TagWriter.h"
#include "platform/files/DiskCalls.h"

namespace platform::tags {

/// Writes into mp3, ogg, flac, wma, m4a and wav files, recognised by content: in memory first, where the
/// outcome is read again, then swapped in. A file of more than kLargest is refused.
class MixingTagWriter final : public catalogue::TagWriter {
 public:
  static constexpr std::int64_t kLargest = 512LL << 20;  ///< bytes

  /// The calls outlive the writer.
  explicit MixingTagWriter(files::DiskCalls& calls = files::SystemDisk()) : calls_(calls) {}

  support::Result<void> Write(const std::string& path, const std::string& text_block,
                              const std::vector<catalogue::TagItem>& items) override;

 private:
  files::DiskCalls& calls_;
};

}  // namespace platform::tags
