// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <fstream>

#include "app/tags/TagStation.h"

namespace app {

void TagStation::ReadPicture(const std::string& path,
                             std::function<void(std::string bytes, std::string failure)> done) {
  context_.workers.Post(
      [path, done = std::move(done), gate = context_.gate, box = context_.window, &say = context_.say] {
        gate->Pass([&] {
          constexpr std::streamoff kMostPicture = 16 << 20;
          std::ifstream file(path, std::ios::binary | std::ios::ate);
          const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
          std::string bytes(size > 0 && size <= kMostPicture ? static_cast<std::size_t>(size) : 0, '\0');
          file.seekg(0);
          const bool read = size > 0 && size <= kMostPicture && file.read(bytes.data(), size);
          std::string failure = read ? std::string() : say(support::Sentence::NoPicture);
          if (!read) bytes.clear();
          box->Post([done, bytes = std::move(bytes), failure = std::move(failure)] { done(bytes, failure); });
        });
      });
}

}  // namespace app
