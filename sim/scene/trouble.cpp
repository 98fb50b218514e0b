// SPDX-License-Identifier: MIT
// The words for what is wrong.
#include "sim/scene/trouble.h"

namespace zel::sim {

const char* codeName(Exit exit) {
    switch (exit) {
    case Exit::Done:
        return "done";
    case Exit::Usage:
        return "usage";
    case Exit::DamagedFile:
        return "damaged_file";
    case Exit::MissingFile:
        return "missing_file";
    case Exit::NoDevice:
        return "no_device";
    case Exit::CannotWrite:
        return "cannot_write";
    case Exit::NoPermission:
        return "no_permission";
    case Exit::Failed:
        break;
    }
    return "failed";
}

std::string asLine(const Trouble& trouble) {
    return trouble.hint.empty() ? trouble.message : trouble.message + "; " + trouble.hint;
}

} // namespace zel::sim
