// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <taglib/tiostream.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace platform::tags {

/// A file for reading alone, in few calls to the system: tags lie in its first and last few thousand bytes,
/// which the library asks for a few at a time.
///
/// Law: what cannot be read is missing, and no more than kMostBytesAtOnce is given at once, whatever a tag
/// claims to be. Threads: one. Owns: the open file.
class PagedFile final : public TagLib::IOStream {
 public:
  /// Pictures are the largest thing in honest tags.
  static constexpr unsigned long kMostBytesAtOnce = 64UL << 20;

  /// Takes over the file.
  PagedFile(std::FILE* file, long size, std::string name);
  ~PagedFile() override;

  [[nodiscard]] TagLib::FileName name() const override { return name_.c_str(); }
  TagLib::ByteVector readBlock(unsigned long length) override;
  void seek(long offset, Position from) override;
  [[nodiscard]] long tell() const override { return at_; }
  long length() override { return size_; }
  [[nodiscard]] bool readOnly() const override { return true; }
  [[nodiscard]] bool isOpen() const override { return true; }

  void writeBlock(const TagLib::ByteVector& /*bytes*/) override {}
  void insert(const TagLib::ByteVector& /*bytes*/, unsigned long /*start*/,
              unsigned long /*replace*/) override {}
  void removeBlock(unsigned long /*start*/, unsigned long /*length*/) override {}
  void truncate(long /*length*/) override {}

 private:
  static constexpr long kPage = 8192;
  struct Page {
    long from = 0;
    long size = 0;  ///< 0: none yet
    std::array<char, kPage> bytes;
  };
  [[nodiscard]] long ReadAt(long from, char* to, long size) const;
  /// The page with this place; null at the end.
  [[nodiscard]] const Page* PageAt(long place);

  std::FILE* const file_;
  const long size_;
  const std::string name_;
  long at_ = 0;
  std::array<Page, 3> pages_;
  std::size_t next_page_ = 0;  ///< to be overwritten
};

}  // namespace platform::tags
