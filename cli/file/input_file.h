// SPDX-License-Identifier: MIT
// A file that a user names: whether it can be read, which kind it is, whether its trailer holds.
#pragma once

#include "cli/command/failure.h"

#include <optional>
#include <string>

namespace zel::cli {

enum class FileKind { Template, Firmware, Keys, Band, Echo };

// Settings of a kind that has no checksum.
inline bool isPlain(FileKind kind) { return kind == FileKind::Band || kind == FileKind::Echo; }

// "template", "firmware", "key", "zelBand", "zelEcho"
const char* kindName(FileKind kind);

// Why a file can't be read; nothing when it can.
Outcome whyUnreadable(const std::string& name);

// The library could read it a moment ago, and no longer or not to its end.
Failure unreadable(const std::string& name);

// All of it; nothing of a file that can't be read.
std::string textOf(const std::string& name);

// Whether the title of a kind stands at its begin; several may.
bool hasTitle(const std::string& text, FileKind kind);

// By its content, the first kind whose title it has; nothing when it is none of them.
std::optional<FileKind> kindOf(const std::string& text);

// Whether a template file was sealed at any time: one that lost a part of its trailer was.
bool hasTrailer(const std::string& text);

struct Trailer {
    bool holds = false;
    int line = 0; // the one meant, from 1; 0 for none
    std::string told;
    std::string computed;   // checksums; empty where there is none
    std::string reason;     // why it doesn't hold, with the line
    bool isPartial = false; // of settings: nothing is wrong, and some have no line
};

// Of a plain kind it tells of the lines.
Trailer trailerOf(const std::string& name, FileKind kind);

// Why a file must not be used: it can't be read, or its trailer doesn't hold.
Outcome whyDamaged(const std::string& name, FileKind kind);
Failure damaged(const std::string& name, const Trailer& trailer);

Failure noTemplate(const std::string& name);

} // namespace zel::cli
