// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/EqResponse.h"

namespace decks {

EqResponse::EqResponse(const Equaliser::Gains& gains, int sample_rate) : sample_rate_(sample_rate) {
  for (std::size_t band = 0; band < filters_.size(); ++band) {
    if (2 * kEqCentres[band] >= sample_rate) continue;
    filters_[band] = music::PeakingFilter({.centre = static_cast<double>(kEqCentres[band]),
                                           .bandwidth = static_cast<double>(kEqBandwidth),
                                           .q = 0,
                                           .gain = static_cast<double>(gains[band])},
                                          sample_rate);
  }
}

double EqResponse::At(double frequency) const {
  double decibels = 0;
  for (const music::Biquad& filter : filters_) {
    if (!filter.IsFlat()) decibels += music::ResponseOf(filter, frequency, sample_rate_);
  }
  return decibels;
}

}  // namespace decks
