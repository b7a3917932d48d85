// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "support/Result.h"

namespace platform::files {

/// The last part of a path, as messages show it.
[[nodiscard]] std::string LastPart(std::string_view path);
/// Upper case, without the dot; empty when there is none.
[[nodiscard]] std::string ExtensionOf(std::string_view path);

/// A plain file with bytes in it, open for reading from its start, unbuffered.
struct PlainFile {
  struct Closer {
    void operator()(std::FILE* open) const { std::fclose(open); }
  };
  std::unique_ptr<std::FILE, Closer> file;
  std::int64_t size = 0;
};

/// Opens a file by its name, which is bytes and never an address. What is missing, a folder, a pipe, empty or
/// not ours to read is refused with a sentence that names it.
[[nodiscard]] support::Result<PlainFile> OpenPlainFile(const std::string& path);

}  // namespace platform::files
