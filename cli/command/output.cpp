// SPDX-License-Identifier: MIT
// Writing results so that a full disk or a closed pipe is noticed.
#include "cli/command/output.h"

#include <cerrno>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace zel::cli {

namespace {
bool gProgressDemanded = false;
std::size_t gColumns = 0; // of the remark in place

// One write, so that no other program's line comes between.
void tell(const std::string& head, std::string_view text) {
    const std::string whole = head + std::string(text) + '\n';
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

} // namespace

std::string toText(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void Output::line(std::string_view text) {
    if (error_ != 0)
        return;
    const std::string whole = std::string(text) + '\n';
    errno = 0;
    const bool written = std::fwrite(whole.data(), 1, whole.size(), stream_) == whole.size() &&
                         std::fflush(stream_) == 0;
    if (!written)
        error_ = errno != 0 ? errno : EIO;
}

bool Output::isOpen() {
    pollfd end = {fileno(stream_), 0, 0};
    if (error_ == 0 && poll(&end, 1, 0) > 0 && (end.revents & POLLERR) != 0)
        error_ = EPIPE;
    return error_ == 0;
}

std::optional<std::size_t> Output::columns() const { return terminalColumns(stream_); }

std::string Output::coloured(std::string_view text, Colour colour) const {
    return cli::coloured(text, colour, stream_);
}

void warn(std::string_view text) {
    constexpr std::string_view kWarning = "warning:";
    const bool isWarning = text.starts_with(kWarning);
    if (isWarning)
        text.remove_prefix(kWarning.size());
    tell("zeltag: " + (isWarning ? cli::coloured(kWarning, Colour::Yellow, stderr) : ""), text);
}

void warnOfEnd(std::string_view text) {
    tell(cli::coloured("zeltag:", Colour::Red, stderr) + ' ', text);
}

void demandProgress(bool demanded) { gProgressDemanded = demanded; }

bool showsProgress() { return gProgressDemanded || isatty(STDERR_FILENO) != 0; }

void showProgress(std::string_view text) {
    if (showsProgress())
        warn(text);
}

void showProgressInPlace(std::string_view text) {
    if (isatty(STDERR_FILENO) == 0)
        return showProgress(text);
    const std::size_t before = std::exchange(gColumns, text.size());
    const std::string rest(before > text.size() ? before - text.size() : 0, ' ');
    const std::string whole = "\rzeltag: " + std::string(text) + rest;
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

void endProgress() {
    if (std::exchange(gColumns, 0) > 0 && isatty(STDERR_FILENO) != 0)
        std::fputc('\n', stderr);
}

void occupyStandardDescriptors() {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(standard, F_GETFD) < 0)
            open("/dev/null", standard == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

} // namespace zel::cli
