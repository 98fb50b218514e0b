// SPDX-License-Identifier: MIT
// INI files of key blobs, loaded into a reader. An input is what stands in front of the trailer;
// the right one is appended, so that the file gets past its check.
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"
#include "fuzz/fuzzed_reader.h"

using namespace zel::fuzz;

namespace {

std::string sealed(const std::string& text, const std::string& digits) {
    return text + "[EOF]\r\niEndOfIniFile=" + digits + "\r\n";
}

// The checksum of the text, as the library tells it of a wrong trailer.
std::string digitsOf(const std::string& text) {
    const InputFile file(sealed(text, "none"));
    zelFileCheck check = {};
    zelTagAPI_checkFile(file.path(), ZELTAGAPI_FILE_KEYS, &check);
    return check.computed;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FuzzedReaders readers({zel::sim::TagOptions{.tagPlusConfigurations = 1}});
    std::string text(textOf(data, size));
    if (!text.empty() && !text.ends_with('\n'))
        text += "\r\n";
    const InputFile file(sealed(text, digitsOf(text)));
    readers.start(0);
    LoadIniFile(file.path());
    return 0;
}
