// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dmx {

/// A document and the steps that made it, to go back and forth over them.
///
/// Law: successive changes of the same thing are one step until Settle. The oldest steps are forgotten where
/// all of them together would weigh too much; Weight(document) in bytes is found beside the document's type.
/// Threads: one at a time.
template <typename Document>
class EditHistory {
 public:
  EditHistory() { Begin({}); }

  [[nodiscard]] const Document& Now() const { return *states_[at_].document; }
  /// Another document, not changed and with nothing to undo.
  void Begin(Document document) {
    states_.clear();
    at_ = 0;
    weight_ = 0;
    thing_.clear();
    Append(std::move(document));
    saved_ = Stamp();
  }

  /// Nothing where the document is the same. An empty thing is a step of its own.
  void Change(Document next, std::string_view thing = {}) {
    if (next == Now()) return;
    const bool merges = Merging(thing);
    DropFrom(merges ? at_ : at_ + 1);
    Append(std::move(next));
    at_ = states_.size() - 1;
    thing_ = thing;
    Forget();
  }
  /// What the thing was before the changes that go on being merged; the present without any.
  [[nodiscard]] const Document& Base(std::string_view thing) const {
    return Merging(thing) ? *states_[at_ - 1].document : Now();
  }
  /// The next change is a step of its own.
  void Settle() { thing_.clear(); }

  [[nodiscard]] bool CanUndo() const { return at_ > 0; }
  [[nodiscard]] bool CanRedo() const { return at_ + 1 < states_.size(); }
  void Undo() {
    if (CanUndo()) --at_;
    Settle();
  }
  void Redo() {
    if (CanRedo()) ++at_;
    Settle();
  }

  /// Names the present state, for MarkSaved once it was written.
  [[nodiscard]] std::uint64_t Stamp() const { return states_[at_].stamp; }
  void MarkSaved(std::uint64_t stamp) {
    saved_ = stamp;
    Settle();
  }
  [[nodiscard]] bool Changed() const { return Stamp() != saved_; }

 private:
  struct State {
    std::unique_ptr<const Document> document;
    std::uint64_t stamp;
    std::size_t weight;
  };
  static constexpr std::size_t kSteps = 500;
  static constexpr std::size_t kHeaviest = std::size_t{96} << 20;

  [[nodiscard]] bool Merging(std::string_view thing) const {
    return !thing.empty() && thing == thing_ && at_ > 0 && !CanRedo();
  }
  void Append(Document document) {
    const std::size_t weight = Weight(document);
    weight_ += weight;
    states_.push_back({std::make_unique<const Document>(std::move(document)), ++stamps_, weight});
  }
  void DropFrom(std::size_t first) {
    while (states_.size() > first) {
      weight_ -= states_.back().weight;
      states_.pop_back();
    }
  }
  void Forget() {
    std::size_t oldest = 0;
    while (oldest < at_ && (states_.size() - oldest > kSteps || weight_ > kHeaviest)) {
      weight_ -= states_[oldest++].weight;
    }
    states_.erase(states_.begin(), states_.begin() + static_cast<std::ptrdiff_t>(oldest));
    at_ -= oldest;
  }

  std::vector<State> states_;
  std::size_t at_ = 0;
  std::size_t weight_ = 0;
  std::uint64_t stamps_ = 0;
  std::uint64_t saved_ = 0;
  std::string thing_;
};

}  // namespace dmx
