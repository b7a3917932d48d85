// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/work/Keeping.h"
#include "app/work/WorkGate.h"
#include "catalogue/MixingTags.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/ports/TagWriter.h"
#include "support/Executor.h"

namespace app {

/// What a tag is read by, written by, and what has to follow it.
struct TagPorts {
  catalogue::TagReader& reader;
  catalogue::TagWriter* writer = nullptr;  ///< null: nothing is written
  catalogue::SideStore* store = nullptr;   ///< null: nothing is kept of files
};

/// Has the values for mixing written into the files' tags by workers.
///
/// Law: the newest values for a file are written, once; a tag that says the same already is left alone. What
/// is kept beside the index goes along with the file to its new size and time. Threads: any one.
class TagDesk {
 public:
  using Complain = std::function<void(const support::Error&)>;

  /// complain is called by a worker, at the first file that cannot be written.
  TagDesk(const TagPorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
          std::shared_ptr<Keeping> keeping, Complain complain);

  void Write(const std::string& path, const catalogue::MixingTags& tags);

 private:
  struct Shared;

  std::shared_ptr<Shared> shared_;  // with the jobs, which may outlive the desk
};

}  // namespace app
