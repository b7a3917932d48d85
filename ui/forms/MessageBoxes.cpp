// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MessageBoxes.h"

#include <QPushButton>
#include <memory>

#include "ui/forms/MessageBox.h"
#include "ui/strings/Decode.h"

namespace ui {

void MessageBoxes::Tell(const std::string& sentence) {
  auto* box = new MessageBox(QStringLiteral("MessageBox"), Decode(sentence), owner_);
  box->AddButton(QStringLiteral("MessageClose"), (*say_)(Say::Close));
  box->ShowOverLists(owner_);
}

void MessageBoxes::Ask(const Question& question, std::function<void(bool)> answer) {
  auto* box = new MessageBox(QStringLiteral("QuestionBox"), Decode(question.text), owner_);
  const auto said = std::make_shared<bool>(false);
  const QPushButton* yes = box->AddButton(QStringLiteral("QuestionYes"), Decode(question.yes));
  box->AddButton(QStringLiteral("QuestionNo"), Decode(question.no));
  QObject::connect(yes, &QPushButton::clicked, &owner_, [said] { *said = true; });
  // However it is closed, but not when the window goes; later, because a button closes the box first.
  QObject::connect(
      box, &QDialog::finished, &owner_, [said, answer = std::move(answer)] { answer(*said); },
      Qt::QueuedConnection);
  box->ShowOverLists(owner_);
}

void MessageBoxes::Ask(const QString& object_name, const QString& question, const QString& yes,
                       std::function<void()> then) {
  if (auto* open = owner_.findChild<MessageBox*>(object_name)) open->close();
  auto* box = new MessageBox(object_name, question, owner_);
  const QPushButton* agree = box->AddButton(object_name + QStringLiteral("Yes"), yes);
  box->AddButton(object_name + QStringLiteral("No"), (*say_)(Say::DialogCancel));
  QObject::connect(agree, &QPushButton::clicked, &owner_, std::move(then));
  box->ShowOverLists(owner_);
}

}  // namespace ui
