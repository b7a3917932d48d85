// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "app/work/OrderedWork.h"

namespace app {

struct StationContext;

/// What is made in an editor and not saved yet, on the disk beside the night journal, so that a fall takes a
/// moment's work at most.
///
/// Law: a draft that the last run left stays as it is until somebody said what is to become of it; set aside,
/// it waits under another name for the next start, beside what this run keeps. Threads: the window's.
class Drafts {
 public:
  enum class Kind { Fixture, Show, Banks };
  static constexpr std::size_t kKinds = 3;
  /// The data file of each.
  static constexpr std::array<std::string_view, kKinds> kFiles{"\\tlv.draft-fixture", "\\tlv.draft-show",
                                                               "\\tlv.draft-banks"};
  /// Behind the name of one that was set aside.
  static constexpr std::string_view kAside = ".left";
  struct Draft {
    Kind kind = Kind::Fixture;
    std::string origin;       ///< the file that it is to be saved as, one line; empty: none yet
    std::string text;         ///< as it would stand there
    bool newer_file = false;  ///< that file was written after the draft
    bool aside = false;       ///< by an earlier run
  };

  explicit Drafts(const StationContext& context);

  /// text: called by a worker. False, and nothing is kept, while the one before it is being written, or a
  /// draft of this kind waits for its answer.
  bool Keep(Kind kind, const std::string& origin, std::function<std::string()> text);
  /// The newest of this kind that was to be kept does not stand on the disk.
  [[nodiscard]] bool Failed(Kind kind) const { return failed_[static_cast<std::size_t>(kind)]; }
  /// It is saved, or nobody wants it.
  void Drop(Kind kind);

  /// Gives each draft that the last run left, and each that was set aside; its kind waits for one of the next
  /// three from then on.
  void Find(std::function<void(const Draft&)> found);
  /// It stands in its editor; what is found on the disk goes when that is kept.
  void Restored(const Draft& draft);
  void Refused(const Draft& draft);
  /// Nobody answered: it is offered again at the next start. Where one waits for that already, this run keeps
  /// nothing of its kind.
  void SetAside(const Draft& draft);

  /// Brings what waits to the disk. Requires: the gate is closed.
  void Flush() { work_.Flush(); }

 private:
  const StationContext& context_;
  OrderedWork work_;
  std::array<bool, kKinds> waiting_{};
  std::array<bool, kKinds> busy_{};
  std::array<bool, kKinds> failed_{};
  std::array<bool, kKinds> restored_{};  ///< from what was set aside
};

}  // namespace app
