// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Sentences.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "support/WordRow.h"
#include "support/Words.h"

namespace support {
namespace {

std::string_view InLanguage(Sentence sentence, int base) {
  return TextOf(Words(), static_cast<int>(sentence), LanguageOfBase(base));
}

template <typename Parts>
std::string Fill(std::string_view rest, const Parts& parts) {
  const auto part = [&parts](std::size_t place) {
    return place < parts.size() ? std::string_view(*(parts.begin() + static_cast<std::ptrdiff_t>(place)))
                                : std::string_view();
  };
  const std::string chosen = ChooseForms(rest, part);
  rest = chosen;
  std::string text;
  while (!rest.empty()) {
    const std::size_t mark = rest.find('%');
    text += rest.substr(0, mark);
    if (mark == std::string_view::npos) break;
    rest.remove_prefix(mark + 1);
    if (!rest.empty()) text += part(static_cast<std::size_t>(rest.front() - '1'));
    rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
  }
  return text;
}

}  // namespace

std::string ChooseForms(std::string_view text,
                        const std::function<std::string_view(std::size_t place)>& part) {
  std::string chosen;
  for (;;) {
    const std::size_t open = text.find('{');
    chosen += text.substr(0, open);
    if (open == std::string_view::npos) return chosen;
    text.remove_prefix(open + 1);
    const std::size_t close = text.find('}');
    std::string_view forms = text.substr(0, close);
    text.remove_prefix(close == std::string_view::npos ? text.size() : close + 1);
    std::size_t place = 0;
    if (forms.size() > 1 && forms[1] == ':') {
      place = static_cast<std::size_t>(forms.front() - '1');
      forms.remove_prefix(2);
    }
    const std::size_t bar = std::min(forms.find('|'), forms.size());
    chosen += part(place) == "1" ? forms.substr(0, bar) : forms.substr(std::min(bar + 1, forms.size()));
  }
}

std::string Sentences::operator()(Sentence sentence, std::initializer_list<std::string_view> parts) const {
  return Fill(InLanguage(sentence, base_), parts);
}

std::string Sentences::operator()(const Saying& saying) const {
  std::vector<std::string> parts = saying.parts;
  for (const Saying& reason : saying.reasons) parts.push_back((*this)(reason));
  return Fill(InLanguage(saying.sentence, base_), parts);
}

std::string Sentences::operator()(const Error& error) const {
  return error.saying.sentence == Sentence{} ? error.text : (*this)(error.saying);
}

const Sentences& English() {
  static const Sentences kEnglish;
  return kEnglish;
}

Saying SayingOf(const Error& error) {
  return error.saying.sentence == Sentence{} ? AsItStands(error.text) : error.saying;
}

Saying AsItStands(std::string text) {
  return {Sentence::AsItStands, {std::move(text)}};
}

Error Failed(ErrorCode code, Sentence sentence, std::vector<std::string> parts) {
  Saying saying{sentence, std::move(parts)};
  std::string text = Sentences()(saying);
  return {code, std::move(text), std::move(saying)};
}

}  // namespace support
