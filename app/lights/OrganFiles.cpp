// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/OrganFiles.h"

#include <utility>

#include "app/StationContext.h"
#include "dmx/DataFile.h"

namespace app {
namespace {

constexpr std::uintmax_t kLongestOrganFile = 64 << 20;

/// Empty where the file is not there.
support::Result<std::string> TextOf(const std::filesystem::path& path) {
  auto text = dmx::WholeDataFile(path, kLongestOrganFile);
  if (!text && text.Failure().code == support::ErrorCode::NotFound) return std::string();
  return text;
}

support::Error Unreadable(std::string_view name) {
  return support::Failed(support::ErrorCode::Unreadable, support::Sentence::OrganFileUnreadable,
                         {std::string(name)});
}

}  // namespace

struct OrganFiles::Outside {
  support::ProgramFolder folder;
  support::FileSaver& files;
  const support::Sentences& say;
  std::shared_ptr<Mailbox> conductor;
  std::shared_ptr<Mailbox> window;
  std::function<void(support::Saying)> tell;

  [[nodiscard]] std::filesystem::path PathOf(lightorgan::Side side, lightorgan::IoBoardSize size) const {
    return folder.Native(lightorgan::BankFileName(side, size));
  }
  [[nodiscard]] support::Result<void> Save(const std::filesystem::path& path, std::string_view text) const {
    const auto saved = files.Save(path, text);
    if (saved) return saved;
    return support::Failed(saved.Failure().code, support::Sentence::OrganFileNotSaved,
                           {path.filename().string(), say(saved.Failure())});
  }
};

OrganFiles::OrganFiles(const StationContext& context)
    : outside_(std::make_shared<Outside>(Outside{context.folder, context.files, context.say,
                                                 context.conductor, context.window, context.tell})),
      work_(context.workers, context.gate) {
  for (auto& newest : newest_) newest = std::make_shared<std::atomic<int>>(0);
}

void OrganFiles::Load(lightorgan::Side side, lightorgan::IoBoardSize size, int number,
                      std::function<void(lightorgan::StepTable)> done) {
  const auto& newest = newest_[side == lightorgan::Side::Io ? 0 : 1];
  const int wish = ++*newest;
  work_.Post([outside = outside_, newest, wish, side, size, number, done = std::move(done)] {
    if (*newest != wish) return;
    const auto text = TextOf(outside->PathOf(side, size));
    auto table =
        lightorgan::LoadBank(text ? std::string_view(text.Value()) : std::string_view(), side, number, size);
    outside->conductor->Post([done, table = std::move(table)] { done(table); });
  });
}

void OrganFiles::ReadBanks(lightorgan::Side side, lightorgan::IoBoardSize size,
                           std::function<void(support::Result<Banks>)> done) {
  work_.Post([outside = outside_, side, size, done = std::move(done)] {
    const auto path = outside->PathOf(side, size);
    const auto text = TextOf(path);
    auto banks = text ? support::Result<Banks>(lightorgan::ParseBanks(text.Value()))
                      : support::Result<Banks>(Unreadable(path.filename().string()));
    outside->window->Post([done, banks = std::move(banks)] { done(banks); });
  });
}

void OrganFiles::SaveBanks(lightorgan::Side side, lightorgan::IoBoardSize size, Banks banks, Done done) {
  work_.Post([outside = outside_, side, size, banks = std::move(banks), done = std::move(done)]() mutable {
    auto saved = outside->Save(outside->PathOf(side, size), lightorgan::BankText(std::move(banks)));
    outside->window->Post([done, saved = std::move(saved)] { done(saved); });
  });
}

void OrganFiles::ReadMemories(std::function<void(support::Result<Memories>)> done) {
  work_.Post([outside = outside_, done = std::move(done)] {
    const auto text = TextOf(outside->folder.Native(kMemoryFile));
    auto memories = text ? support::Result<Memories>(lightorgan::ParseMemories(text.Value()))
                         : support::Result<Memories>(Unreadable(kMemoryFile.substr(1)));
    outside->window->Post([done, memories = std::move(memories)] { done(memories); });
  });
}

void OrganFiles::SaveMemories(const std::vector<lightorgan::Memory>& memories) {
  work_.Post([outside = outside_, text = lightorgan::MemoryText(memories)] {
    const auto saved = outside->Save(outside->folder.Native(kMemoryFile), text);
    if (!saved) outside->tell(SayingOf(saved.Failure()));
  });
}

void OrganFiles::PassSnapshot(const std::string& text, std::function<void(std::string)> done) {
  work_.Post([outside = outside_, text, done = std::move(done)] {
    const auto path = outside->folder.Native(kSnapshotFile);
    const auto saved = outside->Save(path, text);
    if (!saved) outside->tell(SayingOf(saved.Failure()));
    auto back = saved ? TextOf(path) : support::Result<std::string>(text);
    const std::string read = back && !back.Value().empty() ? back.Value() : text;
    outside->window->Post([done, read] { done(read); });
  });
}

}  // namespace app
