// SPDX-License-Identifier: MIT
// The error words of a flash as a table.
#include "cli/firmware/flash_failure.h"

#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace zel::cli {

namespace {

enum class Left { Untouched, Perhaps, InBootLoader };

struct FlashWord {
    std::int64_t word;
    const char* reason;
    Left left;
    const char* remedy; // in front of the command to type
};

constexpr char kCable[] = "check its cable, then load the file again:";
constexpr char kOtherFile[] = "load a file made for it, or this one again:";

constexpr FlashWord kWords[] = {
    {ZELTAGAPI_ERR_BOOT_ENTRY, "its boot loader wasn't entered", Left::Perhaps,
     "unplug it and plug it in again, then run:"},
    {ZELTAGAPI_ERR_BOOT_REPLY, "a reply of its boot loader was lost", Left::InBootLoader, kCable},
    {ZELTAGAPI_ERR_BOOT_REFUSED, "its boot loader refused to start", Left::Perhaps,
     "unplug it and plug it in again, then run:"},
    {ZELTAGAPI_ERR_BOOT_LINE, "it refused a line or never took it", Left::InBootLoader, kOtherFile},
    {ZELTAGAPI_ERR_BOOT_DEVICE, "it is no proximity reader on USB", Left::Untouched,
     "`zeltag list` shows the products"},
    {ZELTAGAPI_ERR_BOOT_READER_REFUSED, "it refused a line", Left::InBootLoader, kOtherFile},
    {ZELTAGAPI_ERR_BOOT_UNKNOWN_REPLY, "it gave no answer to a line, or one that isn't known",
     Left::InBootLoader, kCable},
    {ZELTAGAPI_ERR_BOOT_FILE, "the file can't be opened any more", Left::Untouched,
     "check its name"},
    {ZELTAGAPI_ERR_BOOT_FRAME, "a part of a line couldn't be sent", Left::InBootLoader, kCable}};

constexpr FlashWord kUnknown = {0, "the library tells no reason", Left::Perhaps, kCable};

const FlashWord& meaningOf(std::int64_t word) {
    const auto* const found =
        std::find_if(std::begin(kWords), std::end(kWords),
                     [word](const FlashWord& known) { return known.word == word; });
    return found == std::end(kWords) ? kUnknown : *found;
}

std::string again(const std::string& path) {
    return fmt::format("zeltag firmware load --recover {}", path);
}

std::string hintOf(const FlashWord& meaning, const std::string& path) {
    switch (meaning.left) {
    case Left::Untouched:
        return meaning.remedy;
    case Left::Perhaps:
        return fmt::format("it may be in its boot loader now; {} {}", meaning.remedy, again(path));
    case Left::InBootLoader:
        break;
    }
    return fmt::format("it is left in its boot loader; {} {}", meaning.remedy, again(path));
}

} // namespace

Failure explainFlash(std::int64_t word, const std::string& path, const std::string& device) {
    const FlashWord& meaning = meaningOf(word);
    const std::string code =
        word == 0 ? "" : fmt::format(" (library error 0x{:X})", static_cast<std::uint64_t>(word));
    return {ExitCode::Failed,
            fmt::format("loading {} into {} failed: {}{}", path, device, meaning.reason, code),
            hintOf(meaning, path), device};
}

Failure interruptedAtAnEnd(const std::string& path, const std::string& device) {
    return {ExitCode::Failed,
            fmt::format("interrupted: {} may be in its boot loader now, without firmware", device),
            "run it again: " + again(path), device};
}

Failure interruptedFlash(const std::string& path, const std::string& device) {
    return {ExitCode::Failed,
            fmt::format("interrupted: {} is left in its boot loader, with half a firmware", device),
            "run it again: " + again(path), device};
}

} // namespace zel::cli
