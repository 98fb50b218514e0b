// SPDX-License-Identifier: MIT
// A file that is written under another name and takes its place only when it is complete.
#pragma once

#include "cli/command/failure.h"

#include <cstddef>
#include <string>
#include <sys/types.h>

namespace zel::cli {

class ReplacementFile {
public:
    // Checks that `path` can be written and makes an empty file beside it.
    explicit ReplacementFile(std::string path);

    // Removes what was not kept; a second Ctrl-C does so too.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    // Why nothing can be written; nothing when all is well.
    const Outcome& failure() const { return failure_; }

    // What to write to.
    const std::string& temporary() const { return temporary_; }

    // Puts the temporary file in the place of `path`, with the mode of what was there.
    Outcome keep();

    // Why `size` bytes can't be written. The library doesn't tell a full disk from a silent reader.
    Outcome tryToFill(std::size_t size) const;

private:
    Outcome check();
    Outcome make();
    Failure cannotWrite(const std::string& reason) const;

    std::string path_;   // as the user wrote it
    std::string target_; // behind symbolic links
    std::string temporary_;
    mode_t mode_;
    Outcome failure_;
};

} // namespace zel::cli
