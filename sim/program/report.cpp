// SPDX-License-Identifier: MIT
// Lines for people and objects for programs.
#include "sim/program/report.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace zel::sim {

namespace {

bool write(const std::string& line) {
    return std::fputs((line + '\n').c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
}

} // namespace

int print(const std::string& line, bool json) {
    if (write(line))
        return 0;
    const std::string why = std::strerror(errno);
    return fail(
        {Exit::CannotWrite, "the result can't be written: " + why, "check where stdout goes"},
        json);
}

int fail(const Trouble& trouble, bool json) {
    std::fprintf(stderr, "zelsim: %s\n", asLine(trouble).c_str());
    if (json)
        write(toLine(toJson(trouble)));
    return static_cast<int>(trouble.exit);
}

void warn(const Trouble& trouble, bool json) {
    std::fprintf(stderr, "zelsim: warning: %s\n", asLine(trouble).c_str());
    if (json)
        write(toLine({{"warning", {{"message", trouble.message}, {"hint", trouble.hint}}}}));
}

} // namespace zel::sim
