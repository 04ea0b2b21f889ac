// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeView>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/desktop/files/DocumentModel.h"
#include "app/desktop/files/FileSurvey.h"
#include "prefs/PreferenceReader.h"

namespace dorvanel::desktop {

/// The document that opens for files handed to the running program. It shows them, says which of
/// them are not there (any more), and does nothing with them unless it is told to. Main thread.
class MyDocument final {
  public:
    struct Parts {
        /// Asks about these files, and shreds them when the answer is yes.
        std::function<void(const std::vector<std::string>&)> shred;
        /// Why nothing can be shredded now; "" when it can.
        std::function<QString()> refusal;
    };
    /// `preferences` outlives the document; `files` are paths in bytes.
    MyDocument(const PreferenceReader& preferences, std::vector<std::string> files, Parts parts);

    /// The title of every document, whatever it was made for.
    [[nodiscard]] std::string displayName() const;
    /// The interface file that holds the document's window.
    [[nodiscard]] std::string windowNibName() const { return "MyDocument"; }
    /// The window has been loaded: fills it in and centres it.
    void windowControllerDidLoadNib(QWidget& window);

    /// Loads the window and shows it; false when the interface file cannot be loaded.
    bool showWindows(const std::string& resourcesFolder);
    /// Looks again which of the files are there, and how much is in them.
    void refresh();
    /// Looks no further; what is shredded now is in nobody's way.
    void stopLooking() { survey_.stop(); }
    [[nodiscard]] QWidget* window() const { return window_.get(); }

  private:
    void found(std::size_t row, const FileFacts& facts);
    void tellMissing();
    void shredChosen();
    /// The selected files, or all; none of those that are not there.
    [[nodiscard]] std::vector<std::string> chosenFiles() const;

    const PreferenceReader& preferences_;
    Parts parts_;
    DocumentModel model_;
    std::unique_ptr<QWidget> window_;
    QTreeView* list_ = nullptr;
    FileSurvey survey_;
};

}  // namespace dorvanel::desktop
