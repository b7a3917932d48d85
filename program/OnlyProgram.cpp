// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/OnlyProgram.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <initializer_list>
#include <system_error>
#include <utility>
#include <variant>

#include "platform/files/DiskFileSaver.h"
#include "platform/files/FolderLock.h"
#include "platform/settings/SettingsDisk.h"
#include "platform/settings/SettingsFile.h"
#include "support/ProgramFolder.h"
#include "support/Sentences.h"
#include "support/Settings.h"
#include "support/Text.h"
#include "support/WordRow.h"

namespace program {
namespace {

using platform::files::FolderHolder;
using platform::files::FolderLock;
using support::Sentence;

constexpr std::string_view kLockFile = "\\tlv.lock";
constexpr char kComing = '!';
constexpr int kAnswer = 1000;  ///< milliseconds, of one that is not hung
constexpr int kPause = 100;    ///< milliseconds

/// The same for every way to the folder, and short enough for a socket.
std::string SocketName(const std::filesystem::path& folder) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::weakly_canonical(folder, error);
  const std::string path = (error ? folder : whole).string();
  const QByteArray sum = QCryptographicHash::hash(
      QByteArray(path.data(), static_cast<qsizetype>(path.size())), QCryptographicHash::Sha1);
  return "djtolven-" + sum.toHex().left(16).toStdString();
}

/// In the language of the window, which is not there.
std::string Say(Sentence sentence, std::initializer_list<std::string_view> parts) {
  platform::files::DiskFileSaver files;
  platform::settings::SettingsFile store(platform::settings::UserSettingsPath(), files);
  support::Sentences say;
  const int choice = support::Settings(store, support::ProgramFolder({})).Number("Language", "Current");
  say.Choose(support::BaseOf(support::LanguageOf(choice)));
  if (parts.size() == 0 || !parts.begin()->empty()) return say(sentence, parts);
  return say(sentence, {say(Sentence::AnotherUser)});
}

std::string Held(const FolderHolder& holder) {
  if (holder.same_user) return Say(Sentence::RunsAndIsSilent, {});
  if (holder.user.empty() || holder.since.empty()) return Say(Sentence::RunsElsewhere, {holder.user});
  return Say(Sentence::RunsElsewhereSince, {holder.user, holder.since});
}

}  // namespace

OnlyProgram::OnlyProgram(const std::filesystem::path& folder, std::chrono::milliseconds patience)
    : name_(SocketName(folder)) {
  const std::filesystem::path file = support::ProgramFolder(folder).Native(kLockFile);
  const QDeadlineTimer deadline(patience);
  while (true) {
    auto claim = FolderLock::Take(file);
    if (auto* lock = std::get_if<std::unique_ptr<FolderLock>>(&claim)) {
      lock_ = std::move(*lock);
      break;
    }
    const FolderHolder& holder = std::get<FolderHolder>(claim);
    if (holder.same_user && Ask()) return;
    if (!holder.same_user || deadline.hasExpired()) {
      trouble_ = Held(holder);
      return;
    }
    QThread::msleep(kPause);
  }
  Listen();
}

OnlyProgram::~OnlyProgram() = default;

void OnlyProgram::Listen() {
  const QString name = QString::fromStdString(name_);
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  // Of one that fell: the lock is ours, so nobody listens there.
  QLocalServer::removeServer(name);
  QObject::connect(server_.get(), &QLocalServer::newConnection, server_.get(), [this] {
    while (QLocalSocket* socket = server_->nextPendingConnection()) {
      QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
      asked_ = true;
      if (come_to_front_) come_to_front_();
      socket->write(&kComing, 1);
      socket->disconnectFromServer();
    }
  });
  // Where it cannot listen the lock still keeps the second one out.
  server_->listen(name);
}

bool OnlyProgram::Ask() const {
  QLocalSocket socket;
  socket.connectToServer(QString::fromStdString(name_));
  if (!socket.waitForConnected(kAnswer)) return false;
  return socket.bytesAvailable() > 0 || socket.waitForReadyRead(kAnswer);
}

void OnlyProgram::OnAsked(std::function<void()> come_to_front) {
  come_to_front_ = std::move(come_to_front);
  if (std::exchange(asked_, false) && come_to_front_) come_to_front_();
}

}  // namespace program
