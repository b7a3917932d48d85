// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/work/FileLocks.h"
#include "catalogue/MixingTags.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/ports/TagWriter.h"
#include "support/Executor.h"
#include "support/ports/FileSaver.h"

namespace app {

/// What a tag is read by, written by, and what has to follow it.
struct TagPorts {
  catalogue::TagReader& reader;
  catalogue::TagWriter* writer = nullptr;  ///< null: nothing is written
  catalogue::SideStore* store = nullptr;   ///< null: nothing is kept of files
  support::FileSaver& files;
  std::filesystem::path list;  ///< see kTagList
};

/// The list of the tags that the last run has left to do, in the program folder.
inline constexpr std::string_view kTagList = "\\tlv.tags";

/// A file whose tag is to say this.
struct TagToWrite {
  std::string path;
  catalogue::MixingTags tags;
  bool operator==(const TagToWrite&) const = default;
};

/// Of the list: five lines a file, its path and the values, each empty where there is none. What a line
/// cannot hold is left out; what is read of a list that ends early is what is whole.
[[nodiscard]] std::string TagListText(const std::vector<TagToWrite>& files);
[[nodiscard]] std::vector<TagToWrite> ReadTagList(std::string_view text);

/// Has the values for mixing written into the files' tags by workers.
///
/// Law: the newest values for a file are written, once; a tag that says the same already is left alone. What
/// is kept beside the index goes along with the file to its new size and time. What waits when the program
/// ends, and a worker cannot do in time, is done by the next run. Threads: any one.
class TagKeeper {
 public:
  using Complain = std::function<void(const support::Error&)>;

  /// complain is called by a worker, at the first file that cannot be written.
  TagKeeper(const TagPorts& ports, support::Executor& workers, std::shared_ptr<FileLocks> locks,
            Complain complain);

  /// Goes on with what the last run left.
  void StartUp();
  /// Lets the workers go on for as long as patience lasts; what is left then stands in the list. False when
  /// one of them is still at a file: what it touches must live on. Nothing is written any more after that.
  bool ShutDown(std::chrono::milliseconds patience);

  void Write(const std::string& path, const catalogue::MixingTags& tags);

 private:
  struct Shared;

  std::shared_ptr<Shared> shared_;  // with the jobs, which may outlive the keeper
};

}  // namespace app
