// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace app {

/// New, Open, Save and leaving an editor: what is asked, in which order, and what an answer leads to.
///
/// Law: nothing that was changed is thrown away without the question whether to save it, and a save that was
/// refused, broken off or failed ends whatever it was part of. Questions may be answered at any later time or
/// never; a newer command ends an older one's. Threads: one at a time.
class DocumentFlow {
 public:
  using Path = std::filesystem::path;
  enum class SaveFirst { Yes, No, Cancel };

  /// What is edited.
  struct Document {
    std::function<bool()> changed;
    std::function<std::string()> refusal;   ///< why it cannot be saved at all; empty
    std::function<std::string()> question;  ///< what should be mended before; empty
    /// written: whether it stands on the disk now. What went wrong was told already.
    std::function<void(const Path&, std::function<void(bool written)>)> write;
    std::function<void(const Path&)> read;
    std::function<void()> clear;
  };
  /// Who is asked. None of them waits for the answer.
  struct Asking {
    std::function<void(std::function<void(SaveFirst)>)> save_first;
    std::function<void(const std::string& question, std::function<void(bool mend)>)> mend;
    std::function<void(std::function<void(Path)>)> choose_to_open;
    std::function<void(std::function<void(Path)>)> choose_to_save;
    std::function<void(const std::string&)> tell;
  };

  DocumentFlow(Document document, Asking asking);

  void New();
  void Open();
  /// Opens that one, after the same question.
  void Open(const Path& path);
  void Save();
  /// Then comes what leaving means.
  void Leave(std::function<void()> then);

 private:
  using Step = std::function<void()>;

  /// The step, or nothing once a newer command was given.
  [[nodiscard]] Step Still(Step step);
  void SavedOrNotThen(const Step& then);
  void SaveThen(const Step& then);
  void ChooseAndWrite(const Step& then);

  Document document_;
  Asking asking_;
  std::shared_ptr<int> command_ = std::make_shared<int>(0);  // answers may outlive the flow
};

}  // namespace app
