// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/PagedFile.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform::tags {

PagedFile::PagedFile(std::FILE* file, long size, std::string name)
    : file_(file), size_(size), name_(std::move(name)) {
  for (Page& page : pages_) page.size = 0;
}

PagedFile::~PagedFile() {
  std::fclose(file_);
}

void PagedFile::seek(long offset, Position from) {
  const long base = from == Beginning ? 0 : from == Current ? at_ : size_;
  at_ = std::max(0L, base + std::clamp(offset, -size_ - base, 2 * size_ + kPage));
}

long PagedFile::ReadAt(long from, char* to, long size) const {
  long done = 0;
  while (done < size) {
    const ssize_t read = pread(fileno(file_), to + done, static_cast<std::size_t>(size - done), from + done);
    if (read <= 0) break;
    done += read;
  }
  return done;
}

const PagedFile::Page* PagedFile::PageAt(long place) {
  for (const Page& page : pages_) {
    if (place >= page.from && place < page.from + page.size) return &page;
  }
  if (place >= size_) return nullptr;
  Page& page = pages_[std::exchange(next_page_, (next_page_ + 1) % pages_.size())];
  // A place near the end is looked at from behind.
  page.from = size_ - place < kPage ? std::max(0L, size_ - kPage) : place;
  page.size = ReadAt(page.from, page.bytes.data(), std::min(kPage, size_ - page.from));
  return place < page.from + page.size ? &page : nullptr;
}

TagLib::ByteVector PagedFile::readBlock(unsigned long length) {
  const long wanted =
      std::clamp(static_cast<long>(std::min(length, kMostBytesAtOnce)), 0L, std::max(0L, size_ - at_));
  if (wanted == 0) return {};
  TagLib::ByteVector block(static_cast<unsigned>(wanted), 0);
  char* const to = block.data();
  long done = 0;
  if (wanted > kPage) {
    done = ReadAt(at_, to, wanted);
  } else {
    while (done < wanted) {
      const Page* const page = PageAt(at_ + done);
      if (page == nullptr) break;
      const long skip = at_ + done - page->from;
      const long take = std::min(wanted - done, page->size - skip);
      std::memcpy(to + done, page->bytes.data() + skip, static_cast<std::size_t>(take));
      done += take;
    }
  }
  at_ += done;
  if (done < wanted) block.resize(static_cast<unsigned>(done));
  return block;
}

}  // namespace platform::tags
