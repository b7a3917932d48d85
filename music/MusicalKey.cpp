// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/MusicalKey.h"

#include <algorithm>
#include <array>

namespace music {
namespace {

constexpr int kTones = 12;
constexpr std::array<const char*, kTones> kMajorNames{"C",  "Db", "D",  "Eb", "E",  "F",
                                                      "F#", "G",  "Ab", "A",  "Bb", "B"};
constexpr std::array<const char*, kTones> kMinorNames{"C",  "C#", "D",  "Eb", "E",  "F",
                                                      "F#", "G",  "G#", "A",  "Bb", "B"};

int Wrapped(int tone) {
  return ((tone % kTones) + kTones) % kTones;
}

/// Its place on the circle of fifths, 0 for C; a minor key stands with its relative.
int PlaceOf(const MusicalKey& key) {
  return Wrapped(7 * (key.tonic + (key.minor ? 3 : 0)));
}

MusicalKey AtPlace(int place, bool minor) {
  return {Wrapped(7 * place - (minor ? 3 : 0)), minor};
}

char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool IsDigit(char letter) {
  return letter >= '0' && letter <= '9';
}

bool IsLetter(char letter) {
  return Lower(letter) >= 'a' && Lower(letter) <= 'z';
}

/// Takes the text off the front, in any letter case.
bool Take(std::string_view& text, std::string_view front) {
  if (text.size() < front.size()) return false;
  for (std::size_t i = 0; i < front.size(); ++i) {
    if (Lower(text[i]) != front[i]) return false;
  }
  text.remove_prefix(front.size());
  return true;
}

void TakeBlanks(std::string_view& text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
}

/// The key ends here: nothing, or what begins another word or spelling.
bool Ends(std::string_view text) {
  return text.empty() || (!IsLetter(text.front()) && !IsDigit(text.front()) && text.front() != '#');
}

/// "8A", "08a", "1m", "12d".
std::optional<MusicalKey> ReadWheel(std::string_view text) {
  int number = 0;
  int digits = 0;
  for (; !text.empty() && IsDigit(text.front()) && digits < 2; ++digits) {
    number = 10 * number + (text.front() - '0');
    text.remove_prefix(1);
  }
  TakeBlanks(text);
  if (number < 1 || number > kTones || text.empty() || !Ends(text.substr(1))) return std::nullopt;
  switch (Lower(text.front())) {
    case 'a':
      return AtPlace(number - 8, true);
    case 'b':
      return AtPlace(number - 8, false);
    case 'm':
      return AtPlace(number - 1, true);
    case 'd':
      return AtPlace(number - 1, false);
    default:
      return std::nullopt;
  }
}

/// As ASCII and as the signs of music, in whatever width.
int TakeAccidentals(std::string_view& text) {
  int steps = 0;
  while (true) {
    if (Take(text, "#") || Take(text, "\xE2\x99\xAF") || Take(text, "\xEF\xBC\x83")) {
      ++steps;
    } else if (Take(text, "\xE2\x99\xAD") || (!text.empty() && text.front() == 'b' && Take(text, "b"))) {
      --steps;
    } else {
      return steps;
    }
  }
}

std::optional<bool> TakeMode(std::string_view text, bool small) {
  if (Ends(text) && (text.empty() || text.front() != ' ')) return small;
  const bool upper = !text.empty() && text.front() == 'M';
  TakeBlanks(text);
  Take(text, "-");
  for (const std::string_view word : {"minor", "moll", "mineur", "min"}) {
    std::string_view rest = text;
    if (Take(rest, word) && Ends(rest)) return true;
  }
  for (const std::string_view word : {"major", "dur", "majeur", "maj"}) {
    std::string_view rest = text;
    if (Take(rest, word) && Ends(rest)) return false;
  }
  std::string_view rest = text;
  if (Take(rest, "m") && Ends(rest)) return !upper;
  return Ends(text) ? std::optional(small) : std::nullopt;
}

}  // namespace

std::optional<MusicalKey> ReadKey(std::string_view text) {
  TakeBlanks(text);
  if (text.empty()) return std::nullopt;
  if (IsDigit(text.front())) return ReadWheel(text);
  static constexpr std::array<int, 7> kLetters{9, 11, 0, 2, 4, 5, 7};  // from A
  const char letter = Lower(text.front());
  if (letter < 'a' || letter > 'g') return std::nullopt;
  const bool small = letter == text.front();
  text.remove_prefix(1);
  TakeBlanks(text);
  int steps = TakeAccidentals(text);
  for (const auto& [word, step] : {std::pair("sharp", 1), std::pair("flat", -1)}) {
    if (Take(text, word)) steps += step;
  }
  const auto minor = TakeMode(text, small);
  if (!minor) return std::nullopt;
  return MusicalKey{Wrapped(kLetters[static_cast<std::size_t>(letter - 'a')] + steps), *minor};
}

std::string NameOf(const MusicalKey& key) {
  const auto tone = static_cast<std::size_t>(Wrapped(key.tonic));
  return key.minor ? std::string(kMinorNames[tone]) + "m" : kMajorNames[tone];
}

std::string WheelNameOf(const MusicalKey& key, KeyNotation notation) {
  const int place = PlaceOf(key);
  if (notation == KeyNotation::OpenKey) return std::to_string(place + 1) + (key.minor ? "m" : "d");
  return std::to_string(Wrapped(place + 7) + 1) + (key.minor ? "A" : "B");
}

bool Fits(const MusicalKey& key, const MusicalKey& other) {
  const int apart = Wrapped(PlaceOf(key) - PlaceOf(other));
  return apart == 0 || (key.minor == other.minor && (apart == 1 || apart == kTones - 1));
}

MusicalKey Shifted(const MusicalKey& key, int semitones) {
  return {Wrapped(key.tonic + semitones % kTones), key.minor};
}

int SemitonesTo(const MusicalKey& from, const MusicalKey& to) {
  // A fifth is seven semitones, which is its own inverse among twelve.
  const int up = Wrapped(7 * (PlaceOf(to) - PlaceOf(from)));
  return up > kTones / 2 ? up - kTones : up;
}

int NumberOf(const MusicalKey& key) {
  return Wrapped(key.tonic) + (key.minor ? kTones : 0);
}

std::optional<MusicalKey> KeyOfNumber(int number) {
  if (number < 0 || number >= kMusicalKeys) return std::nullopt;
  return MusicalKey{number % kTones, number >= kTones};
}

}  // namespace music
