// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/TagDraft.h"

namespace catalogue {

/// How a file's name is made of fields, and fields are read out of a name: "%artist% - %title%". A % with no
/// name of a field behind it stands for itself.
class NamePattern {
 public:
  explicit NamePattern(std::string_view pattern);

  /// Whether it names any field, no field twice, and no two without anything between them.
  [[nodiscard]] bool CanRead() const;
  [[nodiscard]] bool NamesFields() const;

  using Fields = std::vector<std::pair<TagField, std::string>>;
  /// Of a name without folder and extension; blanks around each field are taken off. Nothing where the name
  /// is not made like that.
  [[nodiscard]] std::optional<Fields> Read(std::string_view name) const;
  /// The name alone. Signs that a file system refuses are replaced, of a Windows one too, blanks and dots at
  /// the ends are left out, and it is cut to a length that every file system takes. Empty where every field
  /// is.
  [[nodiscard]] std::string NameFor(const TagSheet& sheet) const;

 private:
  struct Part {
    std::string text;
    std::optional<TagField> field;
  };
  std::vector<Part> parts_;
};

/// The words that patterns name fields by.
[[nodiscard]] std::string_view NameOf(TagField field);
/// The last part of a path without its extension.
[[nodiscard]] std::string_view BareName(std::string_view path);

/// A file and what it would be called.
struct PlannedName {
  enum class State { Stays, Renamed, Empty, Taken };
  std::string from;
  std::string to;  ///< in the same folder, with the same extension
  State state = State::Stays;
  bool changed_signs = false;  ///< some were refused and replaced
};
/// Two files that would have one name, whatever the letter case, get none: all but the first are Taken. What
/// lies on the disk besides is not known here.
[[nodiscard]] std::vector<PlannedName> PlanNames(const TagDraft& draft, const NamePattern& pattern);

}  // namespace catalogue
