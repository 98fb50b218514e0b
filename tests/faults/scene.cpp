// SPDX-License-Identifier: MIT
// The main commands.
#include "tests/faults/scene.h"

#include "sim/demo/reader.h"
#include "tests/support/files.h"

namespace zel::test {

namespace {

using Place = Scene::Place;

constexpr char kTitle[] = "/--- zelTag and OEM Reader Configuration Template File ---\n";
constexpr char kOld[] = "what was here before\n";

// Longer than what one call reads.
std::string settings() {
    std::string text = std::string(kTitle) + "bBeepID = 1\n";
    for (int line = 0; line < 200; ++line)
        text += "/ a line that says nothing, but takes its room in the file\n";
    return text + "iIDHoldTO = 2000\n";
}

} // namespace

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> all = {
        {"List", {"list", "--json"}},
        {"Info", {"info"}},
        {"Ping", {"ping", "--json"}},
        {"Wait", {"wait", "--wait", "0"}},
        {"Beep", {"beep", "2"}},
        {"Read", {"read", "--json"}},
        {"ReadCardData", {"read", "--card-data"}},
        {"ConfigShow", {"config", "show"}},
        {"ConfigGet", {"config", "get", "iIDHoldTO"}},
        {"ConfigSet", {"config", "set", "iIDHoldTO=2000", "--json"}},
        {"ConfigReset", {"config", "reset", "--yes"}},
        {"ConfigExport", {"config", "export", "old.txt"}},
        {"ConfigExportSealed", {"config", "export", "old.txt", "--sealed", "--json"}},
        {"ConfigExportNew", {"config", "export", "new.txt", "--progress"}},
        {"ConfigImport", {"config", "import", "settings.txt"}},
        {"ConfigDiff", {"config", "diff", "settings.txt"}},
        {"Luid", {"luid", "77"}},
        {"FileCheck", {"file", "check", "keys.ini", "--json"}},
        {"KeysLoad", {"keys", "load", "keys.ini"}},
        {"FirmwareCheck", {"firmware", "check", "firmware.hex"}, Place::Usb, true},
        {"FirmwareLoad", {"firmware", "load", "firmware.hex", "--yes"}, Place::Usb, true},
        {"Raw", {"raw", "8F", "01"}},
        {"Dump", {"dump", "old.txt"}},
        {"Trace", {"trace", "--output", "log.txt", "--", "ping"}, Place::Usb, false, true},
        {"Doctor", {"doctor", "--json"}, Place::Usb, false, false, true},
        {"LineList", {"list"}, Place::Line},
        {"LineConfigSet", {"config", "set", "iIDHoldTO=2000"}, Place::Line},
        {"LineConfigExport", {"config", "export", "old.txt"}, Place::Line},
        {"BridgeRead", {"read"}, Place::Bridge},
        {"BridgeConfigSet", {"config", "set", "iIDHoldTO=2000", "--json"}, Place::Bridge},
        {"NetFind", {"net", "find", "@", "--json"}, Place::Bridge},
        {"NetMac", {"net", "mac", "@"}, Place::Bridge},
        {"NetMyIp", {"net", "my-ip"}},
    };
    return all;
}

void furnishFolder() {
    for (const auto& entry : std::filesystem::directory_iterator("."))
        std::filesystem::remove(entry.path());
    writeText("settings.txt", settings());
    writeText("old.txt", kOld);
    for (const std::string name : {"keys.ini", "firmware.hex"})
        std::filesystem::copy_file(ZELTAG_EXAMPLES "/" + name, name);
}

std::shared_ptr<sim::TagReader> readerOf(const Scene& scene) {
    sim::TagOptions options;
    options.tagPlusConfigurations = 1;
    auto reader = scene.isFlash ? sim::demoReader() : std::make_shared<sim::TagReader>(options);
    reader->present(sim::card26(26, 3512));
    return reader;
}

} // namespace zel::test
