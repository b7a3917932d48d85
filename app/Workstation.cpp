// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Workstation.h"

#include <utility>

#include "app/WorkstationParts.h"
#include "app/WorkstationView.h"

namespace app {

std::string Caption(std::string_view window) {
  return "dj TOLVEN " + std::string(window);
}

Workstation::Workstation(const Ports& ports, support::ProgramFolder folder, Conducting conducting)
    : parts_(std::make_unique<Parts>(ports, folder, conducting)) {}

Workstation::~Workstation() {
  ShutDown();
  parts_->conductor.Stop();
  parts_->gate->Close();
  parts_->window->Close();
}

void Workstation::AttachWindow(Prompts* prompts, Help* help) {
  parts_->apply.Attach(help);
  for (const std::string& sentence : parts_->prompts.Attach(prompts)) {
    parts_->window->Order(parts_->prompts, &WaitingPrompts::Tell, sentence);
  }
}

void Workstation::PumpWindow() {
  for (const Mailbox::Job& job : parts_->window->Take()) job();
  // Rows stay where they are while a batch fills them in; then they go where they belong.
  if (parts_->collections.TakeUnsorted()) parts_->lists.SortAgain();
  parts_->TellOfSettings();
}

void Workstation::Tick() {
  if (parts_->conducting == Conducting::ByHand) parts_->conductor.ConductOnce();
}

const WorkstationView& Workstation::View() {
  return parts_->rack.View();
}

app::Decks& Workstation::Decks() {
  return parts_->decks;
}

EqualiserStation& Workstation::Equaliser() {
  return parts_->equaliser;
}

OutputStation& Workstation::Outputs() {
  return parts_->outputs;
}

HeadphoneStation& Workstation::Headphones() {
  return parts_->headphones;
}

EffectStation& Workstation::Effects() {
  return parts_->effects;
}

MicrophoneStation& Workstation::Microphone() {
  return parts_->microphone;
}

app::Collections& Workstation::Collections() {
  return parts_->collections;
}

ListStation& Workstation::Lists() {
  return parts_->lists;
}

LightStation& Workstation::Lights() {
  return parts_->lights;
}

LiveLightStation& Workstation::LiveLights() {
  return parts_->live;
}

OrganStation& Workstation::Organ() {
  return parts_->organ;
}

RecordingStation& Workstation::Recording() {
  return parts_->recording;
}

TagStation& Workstation::Tags() {
  return parts_->tags;
}

SongStation& Workstation::Songs() {
  return parts_->songs;
}

app::Drafts& Workstation::Drafts() {
  return parts_->drafts;
}

SingerStation& Workstation::Singers() {
  return parts_->singers;
}

FixturePacks& Workstation::FixturePacks() {
  return parts_->packs;
}

EditorFiles& Workstation::Editors() {
  return parts_->editors;
}

app::Visuals& Workstation::Visuals() {
  return parts_->visuals;
}

app::ApplyButton& Workstation::ApplyButton() {
  return parts_->apply;
}

app::Language& Workstation::Language() {
  return parts_->language;
}

support::Settings& Workstation::Settings() {
  return parts_->settings;
}

std::filesystem::path Workstation::SkinFolder() const {
  return parts_->folder.Native("\\Skins");
}

const MixerHands* Workstation::ResumedMixer() const {
  const Journal* journal = parts_->resume.Resumed();
  return journal == nullptr ? nullptr : &journal->mixer.hands;
}

}  // namespace app
