// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <taglib/apetag.h>
#include <taglib/asftag.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4tag.h>
#include <taglib/xiphcomment.h>

#include <functional>
#include <memory>
#include <string>

#include "catalogue/ports/TagEditor.h"
#include "platform/tags/TagFileEditor.h"

namespace platform::tags {

/// All tags of one file, whatever its kind: what is edited is read from the one that counts and put into
/// every one that is there. Threads: one. Owns: the library's file; borrows the stream.
class OpenedTags {
 public:
  enum class For { Reading, Writing };  ///< for writing a tag is made where there is none

  /// Null where the content carries no tag that can be edited.
  [[nodiscard]] static std::unique_ptr<OpenedTags> Open(TagLib::IOStream& stream, const std::string& name,
                                                        For what);

  /// Track, key, tempo and cover; the rest is FileTags'.
  void ReadInto(catalogue::TagSheet& sheet) const;
  void Put(catalogue::TagField field, const std::string& text);
  /// One without bytes takes the cover away.
  void PutCover(const catalogue::TagPicture& cover);
  [[nodiscard]] bool Save() const { return save_(); }

  /// Shows each field, attribute and item by the name that it has there, and each picture.
  using Picture = TagContents::Picture;
  using ShowField = std::function<void(const std::string& tag, const std::string& name, const std::string&)>;
  void Visit(const ShowField& field, const std::function<void(const Picture&)>& picture) const;

 private:
  OpenedTags() = default;
  bool OpenMpeg(TagLib::IOStream& stream, For what);
  bool OpenOgg(TagLib::IOStream& stream);
  bool OpenFlac(TagLib::IOStream& stream);
  bool OpenAsf(TagLib::IOStream& stream);
  bool OpenMp4(TagLib::IOStream& stream);
  bool OpenWav(TagLib::IOStream& stream, For what);
  bool OpenAiff(TagLib::IOStream& stream);

  std::shared_ptr<TagLib::File> file_;
  std::function<bool()> save_;
  TagLib::ID3v1::Tag* id3v1_ = nullptr;
  TagLib::ID3v2::Tag* id3v2_ = nullptr;
  TagLib::APE::Tag* ape_ = nullptr;
  TagLib::Ogg::XiphComment* xiph_ = nullptr;
  TagLib::FLAC::File* flac_ = nullptr;
  TagLib::ASF::Tag* asf_ = nullptr;
  TagLib::MP4::Tag* mp4_ = nullptr;
  TagLib::RIFF::Info::Tag* info_ = nullptr;
};

}  // namespace platform::tags
