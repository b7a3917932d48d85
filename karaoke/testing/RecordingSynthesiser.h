// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "karaoke/ports/Synthesiser.h"

namespace karaoke::testing {

/// Remembers what it was sent and at which frame; it sounds as loud as it has keys down.
class RecordingSynthesiser final : public Synthesiser {
 public:
  struct Sent {
    std::int64_t frame;
    ChannelMessage message;
  };
  /// What a synthesiser knows after all it was sent.
  struct State {
    std::map<std::pair<int, int>, int> settings;  ///< status and controller, or status alone, to value
    std::set<std::pair<int, int>> keys;           ///< channel and key
    std::vector<std::string> exclusives;
    bool operator==(const State&) const = default;
  };

  void Reset() override { state = {}; }
  void Send(const ChannelMessage& message) override {
    sent.push_back({frame, message});
    const std::pair key(static_cast<int>(message.Channel()), static_cast<int>(message.data1));
    if (message.IsNoteOn()) {
      state.keys.insert(key);
    } else if (message.IsNoteOff()) {
      state.keys.erase(key);
    } else {
      Set(message);
    }
  }
  void SendExclusive(std::string_view message) override { state.exclusives.emplace_back(message); }
  [[nodiscard]] int Grid() const override { return 64; }
  void Render(std::span<float> left, std::span<float> right) override {
    frame += static_cast<std::int64_t>(left.size());
    std::fill(left.begin(), left.end(), static_cast<float>(state.keys.size()) / 16);
    std::copy(left.begin(), left.end(), right.begin());
  }

  std::vector<Sent> sent;
  State state;
  std::int64_t frame = 0;

 private:
  void Set(const ChannelMessage& message) {
    const bool control = message.Kind() == 0xB0;
    if (control && message.data1 >= 120) {
      if (message.data1 != 121)
        std::erase_if(state.keys, [&](auto& k) { return k.first == (message.status & 15); });
      if (message.data1 == 121) {
        std::erase_if(state.settings, [&](auto& s) {
          const auto [status, number] = s.first;
          if ((status & 15) != (message.status & 15)) return false;
          return status < 0xB0 || status >= 0xD0 ||
                 (status < 0xC0 && (number == 1 || number == 11 || number == 64));
        });
      }
      return;
    }
    const int value = message.Kind() == 0xE0 ? message.data2 << 7 | message.data1
                      : control              ? message.data2
                                             : message.data1;
    state.settings[{message.status, control ? message.data1 : 0}] = value;
  }
};

/// Makes recording ones and keeps hold of them; can refuse.
class RecordingSynthesisers final : public SynthesiserFactory {
 public:
  std::vector<Soundfont> Soundfonts() override { return {{"Fake", "/fake.sf2"}}; }
  support::Result<std::unique_ptr<Synthesiser>> Make(const std::string& soundfont, int) override {
    if (--makes_left < 0) {
      return support::Error{support::ErrorCode::NotFound, "There is no soundfont \"" + soundfont + "\"."};
    }
    auto made = std::make_unique<RecordingSynthesiser>();
    all.push_back(made.get());
    return std::unique_ptr<Synthesiser>(std::move(made));
  }
  std::vector<RecordingSynthesiser*> all;
  int makes_left = 1000;
};

}  // namespace karaoke::testing
