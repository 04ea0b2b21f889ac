// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "prefs/PreferenceReader.h"

namespace dorvanel::desktop {

/// The document that opens for files handed to the running program. It shows them, says which of
/// them are not there (any more), and does nothing with them. Main thread.
class MyDocument final {
  public:
    /// `preferences` outlives the document; `files` are paths in bytes.
    MyDocument(const PreferenceReader& preferences, std::vector<std::string> files);

    /// The title of every document, whatever it was made for.
    [[nodiscard]] std::string displayName() const;
    /// The interface file that holds the document's window.
    [[nodiscard]] std::string windowNibName() const { return "MyDocument"; }
    /// The window has been loaded: fills it in and centres it.
    void windowControllerDidLoadNib(QWidget& window) const;

    /// Loads the window and shows it; false when the interface file cannot be loaded.
    bool showWindows(const std::string& resourcesFolder);
    /// Looks again which of the files are there.
    void refresh() const;
    [[nodiscard]] QWidget* window() const { return window_.get(); }

  private:
    void showFiles(QWidget& window) const;

    const PreferenceReader& preferences_;
    std::vector<std::string> files_;
    std::unique_ptr<QWidget> window_;
};

}  // namespace dorvanel::desktop
