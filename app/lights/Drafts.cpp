// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/Drafts.h"

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "app/StationContext.h"
#include "dmx/DataFile.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLongest = 1U << 30;
constexpr std::string_view kLineEnd = "\r\n";

fs::path FileOf(const support::ProgramFolder& folder, Drafts::Kind kind) {
  return folder.Native(Drafts::kFiles[static_cast<std::size_t>(kind)]);
}

fs::path AsideOf(fs::path file) {
  return file += Drafts::kAside;
}

void Remove(const fs::path& path) {
  std::error_code ignored;
  fs::remove(path, ignored);
}

bool IsNewer(const fs::path& path, const fs::path& than) {
  std::error_code failed, failed_too;
  const auto time = fs::last_write_time(path, failed);
  const auto before = fs::last_write_time(than, failed_too);
  return !failed && !failed_too && time > before;
}

std::optional<Drafts::Draft> Read(const fs::path& path, Drafts::Kind kind, bool aside) {
  const auto whole = dmx::WholeDataFile(path, kLongest);
  if (!whole) return std::nullopt;
  const std::size_t end = whole.Value().find(kLineEnd);
  if (end == std::string::npos) return std::nullopt;
  Drafts::Draft draft{kind, whole.Value().substr(0, end), whole.Value().substr(end + kLineEnd.size())};
  draft.newer_file = kind != Drafts::Kind::Banks && IsNewer(draft.origin, path);
  draft.aside = aside;
  return draft;
}

}  // namespace

Drafts::Drafts(const StationContext& context) : context_(context), work_(context.workers, context.gate) {}

bool Drafts::Keep(Kind kind, const std::string& origin, std::function<std::string()> text) {
  const auto place = static_cast<std::size_t>(kind);
  if (waiting_[place] || busy_[place]) return false;
  busy_[place] = true;
  failed_[place] = false;
  const bool restored = std::exchange(restored_[place], false);
  work_.Post([this, place, restored, path = FileOf(context_.folder, kind), origin, text = std::move(text),
              &files = context_.files, window = context_.window] {
    // One that cannot be kept is told by whoever watches all saves.
    const bool kept = static_cast<bool>(files.Save(path, origin + std::string(kLineEnd) + text()));
    if (kept && restored) Remove(AsideOf(path));
    window->Post([this, place, kept, restored] {
      busy_[place] = false;
      failed_[place] = !kept;
      restored_[place] = restored_[place] || (restored && !kept);
    });
  });
  return true;
}

void Drafts::Drop(Kind kind) {
  const auto place = static_cast<std::size_t>(kind);
  failed_[place] = false;
  const bool restored = std::exchange(restored_[place], false);
  work_.Post([path = FileOf(context_.folder, kind), restored] {
    Remove(path);
    if (restored) Remove(AsideOf(path));
  });
}

void Drafts::Restored(const Draft& draft) {
  const auto place = static_cast<std::size_t>(draft.kind);
  if (draft.aside) {
    restored_[place] = true;
  } else {
    waiting_[place] = false;
  }
}

void Drafts::Refused(const Draft& draft) {
  if (draft.aside) return work_.Post([path = AsideOf(FileOf(context_.folder, draft.kind))] { Remove(path); });
  waiting_[static_cast<std::size_t>(draft.kind)] = false;
  Drop(draft.kind);
}

void Drafts::SetAside(const Draft& draft) {
  if (draft.aside) return;
  work_.Post([this, kind = draft.kind, path = FileOf(context_.folder, draft.kind), window = context_.window] {
    const fs::path aside = AsideOf(path);
    std::error_code failed;
    if (fs::exists(aside, failed) || failed) return;
    fs::rename(path, aside, failed);
    if (failed) return;
    window->Post([this, kind] { waiting_[static_cast<std::size_t>(kind)] = false; });
  });
}

void Drafts::Find(std::function<void(const Draft&)> found) {
  waiting_.fill(true);
  work_.Post([this, folder = context_.folder, window = context_.window, found = std::move(found)] {
    std::vector<Draft> drafts;
    for (const Kind kind : {Kind::Fixture, Kind::Show, Kind::Banks}) {
      const fs::path path = FileOf(folder, kind);
      if (auto draft = Read(path, kind, false)) drafts.push_back(*std::move(draft));
      if (auto draft = Read(AsideOf(path), kind, true)) drafts.push_back(*std::move(draft));
    }
    window->Post([this, drafts = std::move(drafts), found] {
      waiting_.fill(false);
      for (const Draft& draft : drafts) {
        if (!draft.aside) waiting_[static_cast<std::size_t>(draft.kind)] = true;
        found(draft);
      }
    });
  });
}

}  // namespace app
