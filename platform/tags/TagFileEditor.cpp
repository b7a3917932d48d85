// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/TagFileEditor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <taglib/tbytevectorstream.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <string_view>

#include "platform/archive/SongArchive.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/PlainFile.h"
#include "platform/tags/OpenedTags.h"
#include "platform/tags/PagedFile.h"
#include "platform/tags/TagLibTagReader.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::tags {
namespace {

using catalogue::FileTags;
using catalogue::TagEdit;
using catalogue::TagField;
using catalogue::TagSheet;
using catalogue::TagUndo;
using support::ErrorCode;
using support::Failed;
using support::Result;
using support::Sentence;

support::Error NotWritten(const std::string& name) {
  return Failed(ErrorCode::Unreadable, Sentence::TagNotWritten, {name});
}

/// All bytes of a file whose tag may be written.
Result<TagLib::ByteVector> BytesOfFile(const std::string& path) {
  const std::string name = files::LastPart(path);
  const auto opened = files::OpenPlainFile(path);
  if (!opened) return opened.Failure();
  if (archive::IsArchive(opened.Value()))
    return Failed(ErrorCode::Unsupported, Sentence::TagInArchive, {name});
  if (opened.Value().size > TagFileEditor::kLargest)
    return Failed(ErrorCode::Unsupported, Sentence::TagFileTooLarge, {name});
  TagLib::ByteVector bytes(static_cast<unsigned>(opened.Value().size), '\0');
  std::rewind(opened.Value().file.get());
  if (std::fread(bytes.data(), 1, bytes.size(), opened.Value().file.get()) != bytes.size())
    return NotWritten(name);
  return bytes;
}

std::string_view View(const TagLib::ByteVector& bytes) {
  return {bytes.data(), bytes.size()};
}

TagSheet SheetOf(const FileTags& tags, const OpenedTags* opened) {
  TagSheet sheet;
  sheet[TagField::Artist] = tags.artist;
  sheet[TagField::Title] = tags.title;
  sheet[TagField::Album] = tags.album;
  sheet[TagField::Genre] = tags.genre;
  sheet[TagField::Year] = tags.year;
  sheet[TagField::Comment] = tags.text_block;
  if (opened != nullptr) opened->ReadInto(sheet);
  return sheet;
}

/// Numbers stand in some tags without what is behind them: a year is no date, a tempo has no decimals.
bool SaysTheSame(TagField field, const std::string& is, const std::string& wanted) {
  if (is == wanted) return true;
  const bool number = field == TagField::Year || field == TagField::Track || field == TagField::Bpm;
  return number && support::LeadingInteger(is) == support::LeadingInteger(wanted);
}

/// What is read of the new bytes is what was to be written, all else is as it was, and so is the sound.
bool CameOut(const TagLib::ByteVector& bytes, const std::string& name, const FileTags& before,
             const TagSheet& old, const TagEdit& edit) {
  const auto after = ReadTags(View(bytes), name);
  if (!after || after.Value().sample_rate != before.sample_rate ||
      std::abs((after.Value().duration - before.duration).count()) >= 100)
    return false;
  TagLib::ByteVectorStream stream(bytes);
  const auto opened = OpenedTags::Open(stream, name, OpenedTags::For::Reading);
  const TagSheet is = SheetOf(after.Value(), opened.get());
  for (std::size_t i = 0; i < catalogue::kTagFields; ++i) {
    if (!SaysTheSame(static_cast<TagField>(i), is.fields[i], edit.fields[i].value_or(old.fields[i])))
      return false;
  }
  // Behind a cover that was taken away the next picture comes up.
  const bool removed = edit.cover && edit.cover->bytes.empty();
  return removed || is.cover.bytes == edit.cover.value_or(old.cover).bytes;
}

/// The bytes between what both have at their beginning and at their end.
TagUndo UndoOf(const TagSheet& old, const TagEdit& edit, std::string_view before, std::string_view now) {
  TagUndo undo;
  for (std::size_t i = 0; i < catalogue::kTagFields; ++i) {
    if (edit.fields[i]) undo.fields.fields[i] = old.fields[i];
  }
  const std::size_t most = std::min(before.size(), now.size());
  std::size_t first = 0, last = 0;
  while (first < most && before[first] == now[first]) ++first;
  while (last < most - first && before[before.size() - 1 - last] == now[now.size() - 1 - last]) ++last;
  const std::size_t length = before.size() - first - last;
  if (length <= TagFileEditor::kLargestUndoBytes) {
    undo.bytes = TagUndo::Bytes{first, now.size() - first - last, std::string(before.substr(first, length)),
                                now.size(), std::hash<std::string_view>{}(now)};
  }
  if (edit.cover) undo.fields.cover = old.cover;
  return undo;
}

bool SameFile(const std::string& a, const std::string& b) {
  struct stat of_a {
  }, of_b{};
  return lstat(a.c_str(), &of_a) == 0 && lstat(b.c_str(), &of_b) == 0 && of_a.st_dev == of_b.st_dev &&
         of_a.st_ino == of_b.st_ino;
}

/// Never over a file that has come meanwhile, where the file system can see to that.
int Move(files::DiskCalls& calls, const std::string& from, const std::string& to) {
  if (!SameFile(from, to)) {
    const int moved = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (moved == 0 || (errno != EINVAL && errno != ENOSYS)) return moved;
  }
  return calls.Rename(from, to);
}

}  // namespace

std::string PictureMime(const std::string& bytes) {
  constexpr std::string_view kPng("\x89PNG\r\n\x1A\n", 8), kPngEnd("IEND\xAE\x42\x60\x82", 8);
  // Some cameras and programs put something behind the end.
  if (bytes.starts_with("\xFF\xD8\xFF"))
    return bytes.rfind("\xFF\xD9") != std::string::npos ? "image/jpeg" : "";
  if (bytes.starts_with(kPng)) return bytes.rfind(kPngEnd) != std::string::npos ? "image/png" : "";
  return {};
}

Result<TagContents> EverythingIn(const std::string& path) {
  const std::string name = files::LastPart(path);
  auto plain = files::OpenPlainFile(path);
  if (!plain) return plain.Failure();
  try {
    PagedFile stream(plain.Value().file.release(), static_cast<long>(plain.Value().size), name);
    const auto opened = OpenedTags::Open(stream, name, OpenedTags::For::Reading);
    if (opened == nullptr) return Failed(ErrorCode::Malformed, Sentence::NoReadableAudio, {name});
    TagContents contents;
    opened->Visit(
        [&](const std::string& tag, const std::string& field, const std::string& value) {
          contents.fields.push_back({tag, field, value});
        },
        [&](const TagContents::Picture& picture) { contents.pictures.push_back(picture); });
    return contents;
  } catch (const std::exception&) {
    return Failed(ErrorCode::Malformed, Sentence::NoReadableAudio, {name});
  }
}

Result<TagSheet> TagFileEditor::Read(const std::string& path) {
  const std::string name = files::LastPart(path);
  auto plain = files::OpenPlainFile(path);
  if (!plain) return plain.Failure();
  if (archive::IsArchive(plain.Value()))
    return Failed(ErrorCode::Unsupported, Sentence::TagInArchive, {name});
  const auto tags = TagLibTagReader().Read(path);
  if (!tags) return tags.Failure();
  try {
    PagedFile stream(plain.Value().file.release(), static_cast<long>(plain.Value().size), name);
    const auto opened = OpenedTags::Open(stream, name, OpenedTags::For::Reading);
    return SheetOf(tags.Value(), opened.get());
  } catch (const std::exception&) {
    return Failed(ErrorCode::Malformed, Sentence::NoReadableAudio, {name});
  }
}

Result<TagUndo> TagFileEditor::Write(const std::string& path, const TagEdit& edit) {
  const std::string name = files::LastPart(path);
  const bool picture = edit.cover && !edit.cover->bytes.empty();
  if (picture && (edit.cover->bytes.size() > kLargestPicture || PictureMime(edit.cover->bytes).empty()))
    return Failed(ErrorCode::Malformed, Sentence::NoPicture, {});
  try {
    const auto read = BytesOfFile(path);
    if (!read) return read.Failure();
    const TagLib::ByteVector& bytes = read.Value();
    const auto before = ReadTags(View(bytes), name);
    if (!before) return before.Failure();
    TagLib::ByteVectorStream stream(bytes);
    const auto opened = OpenedTags::Open(stream, name, OpenedTags::For::Writing);
    if (opened == nullptr) return NotWritten(name);
    const TagSheet old = SheetOf(before.Value(), opened.get());
    for (std::size_t i = 0; i < catalogue::kTagFields; ++i) {
      if (edit.fields[i]) opened->Put(static_cast<TagField>(i), *edit.fields[i]);
    }
    if (picture) opened->PutCover({PictureMime(edit.cover->bytes), edit.cover->bytes});
    if (edit.cover && !picture) opened->PutCover({});
    if (!opened->Save()) return NotWritten(name);
    const TagLib::ByteVector& made = *stream.data();
    if (!CameOut(made, name, before.Value(), old, edit)) return NotWritten(name);
    TagUndo undo = UndoOf(old, edit, View(bytes), View(made));
    if (const auto saved = files::DiskFileSaver(calls_).Save(path, View(made)); !saved)
      return saved.Failure();
    return undo;
  } catch (const std::exception&) {
    return NotWritten(name);
  }
}

Result<void> TagFileEditor::Undo(const std::string& path, const TagUndo& undo) {
  try {
    const auto read = BytesOfFile(path);
    if (!read) return read.Failure();
    const std::string_view now = View(read.Value());
    if (undo.bytes && undo.bytes->size == now.size() &&
        undo.bytes->checksum == std::hash<std::string_view>{}(now)) {
      std::string before(now.substr(0, undo.bytes->from));
      before += undo.bytes->before;
      before += now.substr(undo.bytes->from + undo.bytes->now);
      return files::DiskFileSaver(calls_).Save(path, before);
    }
  } catch (const std::exception&) {
    return NotWritten(files::LastPart(path));
  }
  const auto written = Write(path, undo.fields);
  if (!written) return written.Failure();
  return {};
}

Result<void> TagFileEditor::Rename(const std::string& from, const std::string& to) {
  struct stat there {};
  if (lstat(from.c_str(), &there) != 0)
    return Failed(ErrorCode::NotFound, Sentence::FileMissing, {files::LastPart(from)});
  // Where letter case does not count, the new name may be the file itself.
  if (lstat(to.c_str(), &there) == 0 && !SameFile(from, to))
    return Failed(ErrorCode::Unavailable, Sentence::NameTaken, {files::LastPart(to)});
  if (Move(calls_, from, to) != 0) {
    const int reason = errno;
    if (reason == EEXIST) return Failed(ErrorCode::Unavailable, Sentence::NameTaken, {files::LastPart(to)});
    if (reason == EACCES || reason == EPERM || reason == EROFS)
      return Failed(ErrorCode::Unreadable, Sentence::NotRenamed, {files::LastPart(from)});
    return files::SaveError(to, reason);
  }
  return {};
}

}  // namespace platform::tags
