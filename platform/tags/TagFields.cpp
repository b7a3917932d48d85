// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What is edited, in the words of each kind of tag.
#include <taglib/attachedpictureframe.h>
#include <taglib/flacpicture.h>
#include <taglib/mp4coverart.h>
#include <taglib/textidentificationframe.h>
#include <taglib/tpropertymap.h>

#include <algorithm>

#include "platform/tags/OpenedTags.h"
#include "support/Text.h"

namespace platform::tags {
namespace {

using catalogue::TagField;
using catalogue::TagPicture;
using TagLib::ID3v2::AttachedPictureFrame;

constexpr const char* kMp4Key = "----:com.apple.iTunes:initialkey";

TagLib::String Coded(const std::string& bytes) {
  return {bytes, TagLib::String::UTF8};
}

std::string Plain(const TagLib::String& text) {
  return text.to8Bit(true);
}

/// What every kind of tag has; false for what it has not.
bool PutBasic(TagLib::Tag& tag, TagField field, const std::string& text) {
  switch (field) {
    case TagField::Artist:
      tag.setArtist(Coded(text));
      return true;
    case TagField::Title:
      tag.setTitle(Coded(text));
      return true;
    case TagField::Album:
      tag.setAlbum(Coded(text));
      return true;
    case TagField::Genre:
      tag.setGenre(Coded(text));
      return true;
    case TagField::Year:
      tag.setYear(static_cast<unsigned>(support::LeadingInteger(text)));
      return true;
    case TagField::Comment:
      tag.setComment(Coded(text));
      return true;
    case TagField::Track:
    case TagField::Key:
    case TagField::Bpm:
      break;
  }
  return false;
}

const char* FrameOf(TagField field) {
  return field == TagField::Track ? "TRCK" : field == TagField::Key ? "TKEY" : "TBPM";
}
const char* XiphNameOf(TagField field) {
  return field == TagField::Track ? "TRACKNUMBER" : field == TagField::Key ? "INITIALKEY" : "BPM";
}
const char* ApeNameOf(TagField field) {
  return field == TagField::Track ? "Track" : field == TagField::Key ? "INITIALKEY" : "BPM";
}
const char* AsfNameOf(TagField field) {
  return field == TagField::Track ? "WM/TrackNumber"
         : field == TagField::Key ? "WM/InitialKey"
                                  : "WM/BeatsPerMinute";
}

void PutId3v2(TagLib::ID3v2::Tag& tag, TagField field, const std::string& text) {
  if (PutBasic(tag, field, text)) return;
  tag.removeFrames(FrameOf(field));
  if (text.empty()) return;
  auto* frame = new TagLib::ID3v2::TextIdentificationFrame(FrameOf(field), TagLib::String::UTF8);
  frame->setText(Coded(text));
  tag.addFrame(frame);  // the tag owns it
}

void PutXiph(TagLib::Ogg::XiphComment& tag, TagField field, const std::string& text) {
  if (field == TagField::Comment) {
    TagLib::StringList comments = tag.fieldListMap()["COMMENT"];
    if (!comments.isEmpty()) comments.erase(comments.begin());
    tag.removeFields("COMMENT");
    if (!text.empty()) tag.addField("COMMENT", Coded(text), false);
    for (const TagLib::String& other : comments) tag.addField("COMMENT", other, false);
    // Without a comment the description would come up instead.
    if (text.empty()) tag.removeFields("DESCRIPTION");
    return;
  }
  if (PutBasic(tag, field, text)) return;
  if (field == TagField::Track) tag.removeFields("TRACKNUM");
  if (field == TagField::Key) tag.removeFields("KEY");
  if (field == TagField::Bpm) tag.removeFields("TEMPO");
  tag.removeFields(XiphNameOf(field));
  if (!text.empty()) tag.addField(XiphNameOf(field), Coded(text), true);
}

void PutApe(TagLib::APE::Tag& tag, TagField field, const std::string& text) {
  if (PutBasic(tag, field, text)) return;
  tag.removeItem(TagLib::String(ApeNameOf(field)).upper());
  if (!text.empty()) tag.addValue(ApeNameOf(field), Coded(text), true);
}

void PutAsf(TagLib::ASF::Tag& tag, TagField field, const std::string& text) {
  if (PutBasic(tag, field, text)) return;
  if (field == TagField::Track) tag.removeItem("WM/Track");
  tag.removeItem(AsfNameOf(field));
  if (!text.empty()) tag.setAttribute(AsfNameOf(field), TagLib::ASF::Attribute(Coded(text)));
}

void PutMp4(TagLib::MP4::Tag& tag, TagField field, const std::string& text) {
  if (PutBasic(tag, field, text)) return;
  const auto number = static_cast<int>(support::LeadingInteger(text));
  if (field == TagField::Key) {
    tag.removeItem(kMp4Key);
    if (!text.empty()) tag.setItem(kMp4Key, TagLib::MP4::Item(TagLib::StringList(Coded(text))));
  } else if (field == TagField::Bpm) {
    tag.removeItem("tmpo");
    if (number > 0) tag.setItem("tmpo", TagLib::MP4::Item(number));
  } else {
    const auto slash = text.find('/');
    const auto total =
        slash == std::string::npos
            ? 0
            : static_cast<int>(support::LeadingInteger(std::string_view(text).substr(slash + 1)));
    tag.removeItem("trkn");
    if (number > 0) tag.setItem("trkn", TagLib::MP4::Item(number, total));
  }
}

std::string FirstOf(const TagLib::Ogg::XiphComment& tag, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    const auto found = tag.fieldListMap().find(name);
    if (found != tag.fieldListMap().end() && !found->second.isEmpty()) return Plain(found->second.front());
  }
  return {};
}

std::string TextOfAsf(const TagLib::ASF::Tag& tag, const char* name) {
  const auto found = tag.attributeListMap().find(name);
  if (found == tag.attributeListMap().end() || found->second.isEmpty()) return {};
  const TagLib::ASF::Attribute& value = found->second.front();
  if (value.type() == TagLib::ASF::Attribute::DWordType) return std::to_string(value.toUInt());
  return Plain(value.toString());
}

std::string TextOfMp4(const TagLib::MP4::Tag& tag, TagField field) {
  const TagLib::MP4::ItemMap& items = tag.itemMap();
  const auto found = items.find(field == TagField::Track ? "trkn"
                                : field == TagField::Bpm ? "tmpo"
                                                         : kMp4Key);
  if (found == items.end()) return {};
  if (field == TagField::Key) return Plain(found->second.toStringList().toString());
  if (field == TagField::Bpm) return found->second.toInt() > 0 ? std::to_string(found->second.toInt()) : "";
  const auto [number, total] = found->second.toIntPair();
  if (number <= 0) return {};
  return std::to_string(number) + (total > 0 ? "/" + std::to_string(total) : "");
}

// --- Pictures ---

TagLib::ByteVector BytesOf(const TagPicture& picture) {
  return {picture.bytes.data(), static_cast<unsigned>(picture.bytes.size())};
}

TagPicture PictureOf(const TagLib::String& mime, const TagLib::ByteVector& bytes) {
  return {Plain(mime), {bytes.data(), bytes.size()}};
}

/// The front cover, else the first.
AttachedPictureFrame* CoverFrame(const TagLib::ID3v2::Tag& tag) {
  AttachedPictureFrame* first = nullptr;
  const auto found = tag.frameListMap().find("APIC");
  if (found == tag.frameListMap().end()) return nullptr;
  for (TagLib::ID3v2::Frame* each : found->second) {
    auto* frame = dynamic_cast<AttachedPictureFrame*>(each);
    if (frame == nullptr) continue;
    if (frame->type() == AttachedPictureFrame::FrontCover) return frame;
    first = first == nullptr ? frame : first;
  }
  return first;
}

void PutCoverFrame(TagLib::ID3v2::Tag& tag, const TagPicture& cover) {
  AttachedPictureFrame* frame = CoverFrame(tag);
  if (cover.bytes.empty()) {
    if (frame != nullptr) tag.removeFrame(frame);
    return;
  }
  if (frame == nullptr) {
    frame = new AttachedPictureFrame;
    frame->setType(AttachedPictureFrame::FrontCover);
    tag.addFrame(frame);  // the tag owns it
  }
  frame->setMimeType(cover.mime);
  frame->setPicture(BytesOf(cover));
}

TagLib::FLAC::Picture* CoverOf(const TagLib::List<TagLib::FLAC::Picture*>& pictures) {
  for (TagLib::FLAC::Picture* picture : pictures) {
    if (picture->type() == TagLib::FLAC::Picture::FrontCover) return picture;
  }
  return pictures.isEmpty() ? nullptr : pictures.front();
}

/// Of a FLAC file's blocks or a Vorbis comment, which are called alike.
template <typename Holder>
void PutBlock(Holder& holder, const TagPicture& cover) {
  TagLib::FLAC::Picture* picture = CoverOf(holder.pictureList());
  if (cover.bytes.empty()) {
    if (picture != nullptr) holder.removePicture(picture, true);
    return;
  }
  const bool fresh = picture == nullptr;
  if (fresh) {
    picture = new TagLib::FLAC::Picture;
    picture->setType(TagLib::FLAC::Picture::FrontCover);
  }
  picture->setMimeType(cover.mime);
  picture->setData(BytesOf(cover));
  picture->setWidth(0);  // not known, which players take from the picture
  picture->setHeight(0);
  picture->setColorDepth(0);
  picture->setNumColors(0);
  if (fresh) holder.addPicture(picture);
}

using AsfPictures = TagLib::List<TagLib::ASF::Attribute>;

/// The place of the cover among them; their number where there is none.
unsigned AsfCover(const AsfPictures& pictures) {
  for (unsigned i = 0; i < pictures.size(); ++i) {
    if (pictures[i].toPicture().type() == TagLib::ASF::Picture::FrontCover) return i;
  }
  return 0;
}

void PutAsfCover(TagLib::ASF::Tag& tag, const TagPicture& cover) {
  AsfPictures pictures = tag.attribute("WM/Picture");
  const unsigned place = AsfCover(pictures);
  const bool there = place < pictures.size();
  if (cover.bytes.empty()) {
    if (there) pictures.erase(std::next(pictures.begin(), place));
  } else {
    TagLib::ASF::Picture picture;
    picture.setType(there ? pictures[place].toPicture().type() : TagLib::ASF::Picture::FrontCover);
    picture.setMimeType(cover.mime);
    picture.setPicture(BytesOf(cover));
    if (there) {
      pictures[place] = TagLib::ASF::Attribute(picture);
    } else {
      pictures.append(TagLib::ASF::Attribute(picture));
    }
  }
  tag.removeItem("WM/Picture");
  if (!pictures.isEmpty()) tag.setAttribute("WM/Picture", pictures);
}

void PutMp4Cover(TagLib::MP4::Tag& tag, const TagPicture& cover) {
  TagLib::MP4::CoverArtList covers;
  if (tag.contains("covr")) covers = tag.item("covr").toCoverArtList();
  if (!covers.isEmpty()) covers.erase(covers.begin());
  if (!cover.bytes.empty()) {
    const auto format = cover.mime == "image/png" ? TagLib::MP4::CoverArt::PNG : TagLib::MP4::CoverArt::JPEG;
    covers.prepend(TagLib::MP4::CoverArt(format, BytesOf(cover)));
  }
  tag.removeItem("covr");
  if (!covers.isEmpty()) tag.setItem("covr", TagLib::MP4::Item(covers));
}

}  // namespace

void OpenedTags::ReadInto(catalogue::TagSheet& sheet) const {
  const auto put = [&sheet](TagField field, std::string text) {
    if (sheet[field].empty()) sheet[field] = std::move(text);
  };
  for (const TagField field : {TagField::Track, TagField::Key, TagField::Bpm}) {
    if (id3v2_ != nullptr) {
      const auto found = id3v2_->frameListMap().find(FrameOf(field));
      if (found != id3v2_->frameListMap().end() && !found->second.isEmpty())
        put(field, Plain(found->second.front()->toString()));
    }
    if (ape_ != nullptr) {
      const auto found = ape_->itemListMap().find(TagLib::String(ApeNameOf(field)).upper());
      if (found != ape_->itemListMap().end()) put(field, Plain(found->second.toString()));
    }
    if (asf_ != nullptr) put(field, TextOfAsf(*asf_, AsfNameOf(field)));
    if (mp4_ != nullptr) put(field, TextOfMp4(*mp4_, field));
  }
  if (xiph_ != nullptr) {
    put(TagField::Track, FirstOf(*xiph_, {"TRACKNUMBER", "TRACKNUM"}));
    put(TagField::Key, FirstOf(*xiph_, {"INITIALKEY", "KEY"}));
    put(TagField::Bpm, FirstOf(*xiph_, {"BPM", "TEMPO"}));
  }
  if (sheet[TagField::Track].empty() && id3v1_ != nullptr && id3v1_->track() > 0)
    sheet[TagField::Track] = std::to_string(id3v1_->track());
  if (id3v2_ != nullptr) {
    if (const auto* frame = CoverFrame(*id3v2_)) sheet.cover = PictureOf(frame->mimeType(), frame->picture());
  }
  const TagLib::FLAC::Picture* block = flac_ != nullptr ? CoverOf(flac_->pictureList()) : nullptr;
  if (block == nullptr && xiph_ != nullptr) block = CoverOf(xiph_->pictureList());
  if (block != nullptr) sheet.cover = PictureOf(block->mimeType(), block->data());
  if (asf_ != nullptr) {
    const AsfPictures pictures = asf_->attribute("WM/Picture");
    if (const unsigned place = AsfCover(pictures); place < pictures.size()) {
      const TagLib::ASF::Picture picture = pictures[place].toPicture();
      sheet.cover = PictureOf(picture.mimeType(), picture.picture());
    }
  }
  if (mp4_ != nullptr && mp4_->contains("covr")) {
    const TagLib::MP4::CoverArtList covers = mp4_->item("covr").toCoverArtList();
    if (!covers.isEmpty()) {
      const bool png = covers.front().format() == TagLib::MP4::CoverArt::PNG;
      sheet.cover = PictureOf(png ? "image/png" : "image/jpeg", covers.front().data());
    }
  }
}

void OpenedTags::Put(TagField field, const std::string& text) {
  if (id3v2_ != nullptr) PutId3v2(*id3v2_, field, text);
  if (ape_ != nullptr) PutApe(*ape_, field, text);
  if (xiph_ != nullptr) PutXiph(*xiph_, field, text);
  if (asf_ != nullptr) PutAsf(*asf_, field, text);
  if (mp4_ != nullptr) PutMp4(*mp4_, field, text);
  if (info_ != nullptr) PutBasic(*info_, field, text);
  if (id3v1_ == nullptr || PutBasic(*id3v1_, field, text) || field != TagField::Track) return;
  id3v1_->setTrack(static_cast<unsigned>(support::LeadingInteger(text)));
}

void OpenedTags::PutCover(const TagPicture& cover) {
  if (flac_ != nullptr) {
    PutBlock(*flac_, cover);
    if (cover.bytes.empty() && xiph_ != nullptr) PutBlock(*xiph_, cover);
  } else if (xiph_ != nullptr) {
    PutBlock(*xiph_, cover);
  } else if (id3v2_ != nullptr) {
    PutCoverFrame(*id3v2_, cover);
  }
  if (asf_ != nullptr) PutAsfCover(*asf_, cover);
  if (mp4_ != nullptr) PutMp4Cover(*mp4_, cover);
}

void OpenedTags::Visit(const ShowField& field, const std::function<void(const Picture&)>& picture) const {
  const auto show = [&](const char* tag, const TagLib::String& name, const TagLib::String& value) {
    field(tag, Plain(name), Plain(value));
  };
  if (id3v2_ != nullptr) {
    for (const TagLib::ID3v2::Frame* frame : id3v2_->frameList()) {
      const auto* shown = dynamic_cast<const AttachedPictureFrame*>(frame);
      if (shown != nullptr) {
        picture({std::to_string(shown->type()), Plain(shown->mimeType()), shown->picture().size()});
      } else {
        show("ID3v2", TagLib::String(frame->frameID()), frame->toString());
      }
    }
  }
  if (ape_ != nullptr) {
    for (const auto& [key, item] : ape_->itemListMap()) show("APE", key, item.toString());
  }
  if (xiph_ != nullptr) {
    for (const auto& [key, values] : xiph_->fieldListMap()) {
      for (const TagLib::String& value : values) show("Vorbis", key, value);
    }
    for (const auto* each : xiph_->pictureList())
      picture({std::to_string(each->type()), Plain(each->mimeType()), each->data().size()});
  }
  if (flac_ != nullptr) {
    for (const auto* each : flac_->pictureList())
      picture({std::to_string(each->type()), Plain(each->mimeType()), each->data().size()});
  }
  if (asf_ != nullptr) {
    for (const auto& [key, values] : asf_->attributeListMap()) {
      for (const TagLib::ASF::Attribute& value : values) {
        const TagLib::ASF::Picture shown = value.toPicture();
        if (shown.isValid()) {
          picture({std::to_string(shown.type()), Plain(shown.mimeType()), shown.picture().size()});
        } else {
          show("ASF", key, value.toString());
        }
      }
    }
  }
  if (mp4_ != nullptr) {
    for (const auto& [key, item] : mp4_->itemMap()) {
      if (key != "covr") {
        const TagField number = key == "trkn" ? TagField::Track : TagField::Bpm;
        const bool counts = key == "trkn" || key == "tmpo";
        field("MP4", Plain(key),
              counts ? TextOfMp4(*mp4_, number) : Plain(item.toStringList().toString("; ")));
        continue;
      }
      for (const TagLib::MP4::CoverArt& each : item.toCoverArtList()) {
        const bool png = each.format() == TagLib::MP4::CoverArt::PNG;
        picture({"3", png ? "image/png" : "image/jpeg", each.data().size()});
      }
    }
  }
  if (info_ != nullptr) {
    for (const auto& [key, value] : info_->fieldListMap()) show("INFO", TagLib::String(key), value);
  }
}

}  // namespace platform::tags
