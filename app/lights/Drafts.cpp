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

std::optional<Drafts::Draft> Read(const support::ProgramFolder& folder, Drafts::Kind kind) {
  const auto whole = dmx::WholeDataFile(FileOf(folder, kind), kLongest);
  if (!whole) return std::nullopt;
  const std::size_t end = whole.Value().find(kLineEnd);
  if (end == std::string::npos) return std::nullopt;
  return Drafts::Draft{kind, whole.Value().substr(0, end), whole.Value().substr(end + kLineEnd.size())};
}

}  // namespace

Drafts::Drafts(const StationContext& context) : context_(context), work_(context.workers, context.gate) {}

bool Drafts::Keep(Kind kind, const std::string& origin, std::function<std::string()> text) {
  const auto place = static_cast<std::size_t>(kind);
  if (waiting_[place] || busy_[place]) return false;
  busy_[place] = true;
  work_.Post([this, place, path = FileOf(context_.folder, kind), origin, text = std::move(text),
              &files = context_.files, window = context_.window] {
    // One that cannot be kept is told by whoever watches all saves; the next one comes in a moment.
    static_cast<void>(files.Save(path, origin + std::string(kLineEnd) + text()));
    window->Post([this, place] { busy_[place] = false; });
  });
  return true;
}

void Drafts::Drop(Kind kind) {
  work_.Post([path = FileOf(context_.folder, kind)] {
    std::error_code ignored;
    fs::remove(path, ignored);
  });
}

void Drafts::Find(std::function<void(const Draft&)> found) {
  waiting_.fill(true);
  work_.Post([this, folder = context_.folder, window = context_.window, found = std::move(found)] {
    std::vector<Draft> drafts;
    for (const Kind kind : {Kind::Fixture, Kind::Show, Kind::Banks}) {
      if (auto draft = Read(folder, kind)) drafts.push_back(*std::move(draft));
    }
    window->Post([this, drafts = std::move(drafts), found] {
      waiting_.fill(false);
      for (const Draft& draft : drafts) {
        waiting_[static_cast<std::size_t>(draft.kind)] = true;
        found(draft);
      }
    });
  });
}

}  // namespace app
