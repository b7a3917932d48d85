// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/library/XmlStream.h"

#include <expat.h>

#include <memory>

namespace platform::library {
namespace {

constexpr int kPiece = 1 << 16;

struct Reading {
  XML_Parser parser;
  XmlListener& listener;
  int depth = 0;
  bool refused = false;
  bool over = false;  ///< the root element ended

  void Refuse() {
    refused = true;
    XML_StopParser(parser, XML_FALSE);
  }
};

void XMLCALL OnBegin(void* user, const char* name, const char** attributes) {
  auto& reading = *static_cast<Reading*>(user);
  if (reading.refused) return;
  if (++reading.depth > kDeepest) return reading.Refuse();
  reading.listener.Begin(name, Attributes(attributes));
}

void XMLCALL OnEnd(void* user, const char* name) {
  auto& reading = *static_cast<Reading*>(user);
  if (reading.refused) return;
  reading.listener.End(name);
  reading.over = --reading.depth == 0;
}

void XMLCALL OnText(void* user, const char* text, int size) {
  auto& reading = *static_cast<Reading*>(user);
  if (!reading.refused) reading.listener.Text({text, static_cast<std::size_t>(size)});
}

void XMLCALL OnDoctype(void* user, const char*, const char*, const char*, int internal_subset) {
  if (internal_subset != 0) static_cast<Reading*>(user)->Refuse();
}

struct FreeParser {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

XmlOutcome OutcomeOf(const Reading& reading, bool at_end) {
  XmlOutcome outcome;
  outcome.line = static_cast<long>(XML_GetCurrentLineNumber(reading.parser));
  // What stands behind the root element takes nothing away from it.
  if (reading.refused) {
    outcome.ending = XmlEnding::Refused;
  } else if (!reading.over) {
    outcome.ending = at_end ? XmlEnding::Cut : XmlEnding::Damaged;
  }
  return outcome;
}

}  // namespace

std::string_view Attributes::operator[](std::string_view name) const {
  for (const char** pair = pairs_; *pair != nullptr; pair += 2) {
    if (name == pair[0]) return pair[1];
  }
  return {};
}

XmlOutcome ReadXml(const std::function<long(char* buffer, std::size_t size)>& more, XmlListener& listener) {
  const std::unique_ptr<XML_ParserStruct, FreeParser> parser(XML_ParserCreate(nullptr));
  Reading reading{parser.get(), listener};
  XML_SetUserData(parser.get(), &reading);
  XML_SetElementHandler(parser.get(), &OnBegin, &OnEnd);
  XML_SetCharacterDataHandler(parser.get(), &OnText);
  XML_SetStartDoctypeDeclHandler(parser.get(), &OnDoctype);
  XML_SetParamEntityParsing(parser.get(), XML_PARAM_ENTITY_PARSING_NEVER);
  XML_Index fed = 0;
  for (;;) {
    void* const buffer = XML_GetBuffer(parser.get(), kPiece);
    if (buffer == nullptr) return {XmlEnding::Refused, 0};
    const long got = more(static_cast<char*>(buffer), kPiece);
    if (got < 0) return {XmlEnding::Stopped, 0};
    const XML_Status status = XML_ParseBuffer(parser.get(), static_cast<int>(got), got == 0);
    if (status != XML_STATUS_OK) return OutcomeOf(reading, got == 0);
    if (got == 0) return {};
    fed += got;
    // What has begun and not ended yet is held until it does.
    const XML_Index told = XML_GetCurrentByteIndex(parser.get());
    if (fed - told > static_cast<XML_Index>(kLongest)) {
      reading.refused = true;
      return OutcomeOf(reading, false);
    }
  }
}

}  // namespace platform::library
