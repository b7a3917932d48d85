// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>

#include "platform/boards/BoardSender.h"
#include "platform/usb/K8061Board.h"
#include "support/Clock.h"

namespace platform::usb {

/// The K8061 boards at the USB ports of this computer, without the maker's library.
///
/// A board's jumpers say whether it is board 0 or 1; one that says otherwise, or what another has said
/// before, is left alone and told of. Threads: the sender's.
class K8061Line final : public boards::BoardLine {
 public:
  [[nodiscard]] boards::BoardSet Look(Occasion occasion) override;
  [[nodiscard]] boards::BoardSet Held() const override;
  [[nodiscard]] bool Switch(std::size_t board, std::uint8_t channels) override;
  [[nodiscard]] bool Dim(std::size_t board, const boards::DimmedValues& values,
                         const boards::DimmedValues* before) override;
  void Release() override;
  [[nodiscard]] support::Error Trouble() const override;

 private:
  struct Place {
    std::unique_ptr<K8061Board> board;
    bool powered = true;
  };

  void DropThoseGone(const UsbDevices& devices);
  [[nodiscard]] boards::BoardSet TakeThoseNew(const UsbDevices& devices);
  /// Nothing when it was taken.
  [[nodiscard]] support::Error Take(libusb_device* device, boards::BoardSet& taken);
  [[nodiscard]] boards::BoardSet AskForPower();
  [[nodiscard]] bool Told(std::size_t board, const support::Result<void>& told);
  [[nodiscard]] bool Holds(libusb_device* device) const;

  support::SteadyClock clock_;
  std::unique_ptr<UsbContext> usb_;
  std::array<Place, boards::kBoards> places_;
  support::Error left_alone_{};  ///< why a board that is there is not used; no text: there is none
  support::TimePoint next_try_{};
  support::TimePoint next_question_{};
};

class K8061Boards final : public boards::BoardSender {
 public:
  K8061Boards() : BoardSender(std::make_unique<K8061Line>()) {}
};

}  // namespace platform::usb
