// SPDX-License-Identifier: MIT
// Reads the session files that the login manager keeps.
#include "cli/doctor/seat.h"

#include <filesystem>
#include <fstream>
#include <map>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

// Lines of NAME=VALUE.
std::map<std::string, std::string> wordsOf(const fs::path& path) {
    std::map<std::string, std::string> words;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        if (const std::size_t sign = line.find('='); sign != line.npos)
            words[line.substr(0, sign)] = line.substr(sign + 1);
    return words;
}

} // namespace

std::optional<Seat> seatOf(const Machine& machine) {
    std::error_code error;
    fs::directory_iterator entry(machine.at("/run/systemd/sessions"), error);
    if (error)
        return {};
    Seat best;
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        auto words = wordsOf(entry->path());
        if (words["UID"] != std::to_string(machine.user) || words["SEAT"].empty() || best.isActive)
            continue;
        best = {words["SEAT"], words["ACTIVE"] == "1"};
    }
    return best;
}

} // namespace zel::cli
