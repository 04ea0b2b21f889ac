// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "platform/CleaningCalls.h"
#include "targets/cleaning/Image.h"

namespace dorvanel::cleaning {

struct ShownImages;

/// The files that the database library is shown in place of the disk's: images under names of our
/// own. What it makes by itself, logs and journals and temporary files, stays in memory; what it
/// removes is removed from what it is shown only. No lock is asked for: whoever opens an image has
/// seen to that. Must outlive the connections that use it; one thread at a time.
class ImageFiles {
  public:
    explicit ImageFiles(platform::CleaningCalls& calls);
    ~ImageFiles();
    ImageFiles(const ImageFiles&) = delete;
    ImageFiles& operator=(const ImageFiles&) = delete;

    /// The name under which the library knows these files, for opening a connection.
    [[nodiscard]] const char* registeredName() const;
    /// Shows the image under `name`, which does not begin with "/".
    void show(const std::string& name, std::shared_ptr<Image> image);
    /// Where all images of these files take their memory, and tell what went wrong.
    [[nodiscard]] ImageMemory& memory();

  private:
    std::unique_ptr<ShownImages> shown_;
};

}  // namespace dorvanel::cleaning
