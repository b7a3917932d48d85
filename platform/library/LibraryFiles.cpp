// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/library/LibraryFiles.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/files/PlainFile.h"
#include "platform/library/XmlLibraries.h"
#include "support/Sentences.h"

namespace platform::library {
namespace {

using catalogue::ForeignLibrary;
using catalogue::LibraryWatch;
using support::ErrorCode;
using support::Sentence;

/// The root element decides who listens.
class ByRoot final : public XmlListener {
 public:
  explicit ByRoot(LibraryWatch& watch) : watch_(watch) {}

  void Begin(std::string_view name, const Attributes& attributes) override {
    if (!asked_) listener_ = ListenerFor(name, watch_);
    asked_ = true;
    if (listener_ != nullptr) listener_->Begin(name, attributes);
  }
  void Text(std::string_view text) override {
    if (listener_ != nullptr) listener_->Text(text);
  }
  void End(std::string_view name) override {
    if (listener_ != nullptr) listener_->End(name);
  }
  /// The XML is another one.
  [[nodiscard]] bool IsOther() const { return asked_ && listener_ == nullptr; }
  [[nodiscard]] LibraryListener* Listener() const { return listener_.get(); }

 private:
  LibraryWatch& watch_;
  bool asked_ = false;
  std::unique_ptr<LibraryListener> listener_;
};

support::Result<ForeignLibrary> Outcome(const XmlOutcome& outcome, const ByRoot& root,
                                        const std::string& name) {
  const std::string line = std::to_string(outcome.line);
  if (outcome.ending == XmlEnding::Refused)
    return Failed(ErrorCode::Malformed, Sentence::LibraryRefused, {name, line});
  if (root.Listener() == nullptr) return Failed(ErrorCode::Unsupported, Sentence::LibraryUnknown, {name});
  ForeignLibrary library = root.Listener()->Finish();
  if (outcome.ending == XmlEnding::Whole) return library;
  if (library.tracks.empty()) return Failed(ErrorCode::Malformed, Sentence::LibraryDamaged, {name, line});
  library.notes.push_back({Sentence::LibraryEndsEarly, {line}});
  return library;
}

using More = std::function<long(char* buffer, std::size_t size)>;

support::Result<ForeignLibrary> ReadFrom(const More& more, const std::string& name, LibraryWatch& watch) {
  ByRoot root(watch);
  const XmlOutcome outcome = ReadXml(
      [&](char* buffer, std::size_t size) -> long {
        return watch.stop || root.IsOther() ? -1 : more(buffer, size);
      },
      root);
  if (watch.stop) return Failed(ErrorCode::Cancelled, Sentence::AsItStands);
  return Outcome(outcome, root, name);
}

/// As far as the first bytes tell: the mark of a coding or blanks, and then a "<".
bool LooksLikeXml(std::string_view head) {
  if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
  if (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF")) return true;
  const std::size_t first = head.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && head[first] == '<';
}

}  // namespace

support::Result<ForeignLibrary> ReadXmlLibrary(std::string_view bytes, const std::string& name) {
  LibraryWatch watch;
  return ReadFrom(
      [&](char* buffer, std::size_t size) {
        const std::size_t piece = std::min(size, bytes.size());
        std::memcpy(buffer, bytes.data(), piece);
        bytes.remove_prefix(piece);
        return static_cast<long>(piece);
      },
      name, watch);
}

support::Result<ForeignLibrary> LibraryFiles::Read(const std::string& path, LibraryWatch& watch) {
  auto opened = files::OpenPlainFile(path);
  if (!opened) return opened.Failure();
  std::FILE* const file = opened.Value().file.get();
  const std::string name = files::LastPart(path);
  char head[64];
  const std::size_t got = std::fread(head, 1, sizeof head, file);
  if (!LooksLikeXml({head, got})) return ReadSerato(path, watch);
  std::rewind(file);
  return ReadFrom(
      [file](char* buffer, std::size_t size) { return static_cast<long>(std::fread(buffer, 1, size, file)); },
      name, watch);
}

}  // namespace platform::library
