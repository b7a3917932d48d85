// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/OutputText.h"

#include "ui/strings/Decode.h"

namespace ui {

QString PairText(int speaker, const Strings& say) {
  constexpr Say kPairs[] = {Say::PairAll, Say::PairFront, Say::PairRear, Say::PairCentre, Say::PairRear2};
  return say(kPairs[speaker >= 1 && speaker <= 4 ? speaker : 0]);
}

QString DeviceText(int device, const std::vector<std::string>& devices, const Strings& say) {
  if (device == 0) return say(Say::NoSound);
  if (device < 0 || device > static_cast<int>(devices.size())) return say(Say::DeviceMissing).arg(device);
  return Decode(devices[static_cast<std::size_t>(device - 1)]);
}

QString OutputText(const app::OutputView& output, const std::vector<std::string>& devices,
                   const Strings& say) {
  const QString name = DeviceText(output.device, devices, say);
  if (output.device == 0 || output.speaker < 1 || output.speaker > 4) return name;
  return name + QStringLiteral(", ") + PairText(output.speaker, say);
}

}  // namespace ui
