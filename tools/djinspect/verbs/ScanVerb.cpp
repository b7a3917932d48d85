// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <future>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "app/files/KaraokeSongReader.h"
#include "app/files/TreeScan.h"
#include "catalogue/FolderScan.h"
#include "platform/files/DiskFolders.h"
#include "platform/tags/TagLibTagReader.h"
#include "support/Executor.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using catalogue::ScanMode;

/// Folders without archives, which are rows of the window's own.
class LooseFiles final : public catalogue::FolderReader {
 public:
  support::Result<catalogue::FolderContent> List(const std::string& folder, const Wanted& wanted) override {
    return disk_.List(folder,
                      [&](std::string_view name) { return !catalogue::IsArchive(name) && wanted(name); });
  }
  void Look(const std::string& folder, std::vector<catalogue::ListedFile>& files) override {
    disk_.Look(folder, files);
  }

 private:
  platform::files::DiskFolders disk_;
};

app::ScanFound Scan(const std::string& folder, ScanMode mode) {
  constexpr int kThreads = 2;
  LooseFiles folders;
  platform::tags::TagLibTagReader tags;
  app::KaraokeSongReader songs;
  support::ThreadPool workers(kThreads);
  app::TreeScan scan({folders, tags, nullptr, &songs}, workers, std::make_shared<app::WorkGate>(),
                     std::make_shared<app::IdleCores>(kThreads));
  std::promise<app::ScanFound> found;
  const auto running =
      scan.Start({mode, folder}, [&found](app::ScanFound all) { found.set_value(std::move(all)); });
  return found.get_future().get();
}

nlohmann::ordered_json RowsOf(const catalogue::track_table& table) {
  auto rows = nlohmann::ordered_json::array();
  const int columns = static_cast<int>(table.Columns().size());
  for (int row = 1; row <= table.Rows(); ++row) {
    auto cells = nlohmann::ordered_json::array();
    for (int column = 1; column <= columns; ++column) cells.push_back(ReadableText(table.Cell(row, column)));
    rows.push_back(std::move(cells));
  }
  return rows;
}

}  // namespace

/// The rows that a folder's files would get, in the order of the scan, and the size of all files.
ExitCode InspectScan(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const std::string& mode = arguments.options.find("--mode")->second;
  if (mode != "music" && mode != "karaoke") return ExitCode::WrongUse;
  const app::ScanFound found =
      Scan(arguments.words[0], mode == "music" ? ScanMode::Music : ScanMode::Karaoke);
  if (found.end != app::ScanFound::End::Complete) {
    err << "There is no folder \"" << arguments.words[0] << "\", or it went away.\n";
    return ExitCode::NothingRead;
  }
  for (const std::string& folder : found.unreadable)
    err << "The folder \"" << folder << "\" cannot be read.\n";
  out << nlohmann::ordered_json{{"bytes", found.bytes}, {"rows", RowsOf(found.rows)}}.dump(1) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
