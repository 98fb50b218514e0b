// SPDX-License-Identifier: MIT
// The lines of an INI file of key blobs, and the run over them.
#include "firmware/ini_file.h"

#include "base/wipe.h"
#include "firmware/key_blobs.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace zel::firmware {

namespace {

constexpr std::string_view kHeadStart = "[Blob";
constexpr std::string_view kHeadEnd = "]\r\n";
constexpr char kEndOfBlobs[] = "[EOF]\r\n";
constexpr int kHexadecimal = 16;

// The bytes of one section after the other. With its whole room from the start, the vector never
// moves and so leaves no copy behind.
class BlobBytes {
public:
    BlobBytes() { bytes_.reserve(kMostIniBytes); }
    ~BlobBytes() { clear(); }
    BlobBytes(const BlobBytes&) = delete;
    BlobBytes& operator=(const BlobBytes&) = delete;

    void clear() {
        wipe(bytes_.data(), bytes_.size());
        bytes_.clear();
    }
    std::vector<unsigned char>& get() { return bytes_; }

private:
    std::vector<unsigned char> bytes_;
};

// A file whose stream buffer is wiped once it is closed.
class SecretFile {
public:
    explicit SecretFile(const char* path) : file_(std::fopen(path, "rb")) {
        if (file_)
            std::setvbuf(file_.get(), buffer_.area.data(), _IOFBF, buffer_.area.size());
    }
    std::FILE* get() const { return file_.get(); }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    Wiped<std::array<char, 4096>> buffer_; // outlives the stream
    std::unique_ptr<std::FILE, Close> file_;
};

// Ends the text at a mark. The rest behind it, null without a mark.
char* cutAt(char* text, char mark) {
    char* const end = std::strchr(text, mark);
    if (!end)
        return nullptr;
    *end = '\0';
    return end + 1;
}

} // namespace

bool readIniLine(std::FILE* file, char* line) {
    return std::fgets(line, kIniLineSize, file) != nullptr;
}

bool isBlobHead(const char* line) {
    std::string_view rest = line;
    if (!rest.starts_with(kHeadStart))
        return false;
    rest.remove_prefix(kHeadStart.size());
    const std::size_t digits = rest.find_first_not_of("0123456789");
    return digits != rest.npos && rest.substr(digits) == kHeadEnd;
}

void parseStringToBuffer(char* text, std::vector<unsigned char>& bytes) {
    char* rest = nullptr;
    for (char* word = strtok_r(text, " ", &rest); word && std::strcmp(word, "\n") != 0;
         word = strtok_r(nullptr, " ", &rest))
        bytes.push_back(static_cast<unsigned char>(std::strtol(word, nullptr, kHexadecimal)));
}

int parseBlobHeaderAndData(std::FILE* file, std::vector<unsigned char>& bytes, const char* key) {
    Wiped<IniLine> line;
    if (!readIniLine(file, line.area.data()))
        return 0;
    char* const value = cutAt(line.area.data(), '=');
    if (!value || std::strcmp(line.area.data(), key) != 0)
        return 0;
    cutAt(value, '=');
    parseStringToBuffer(value, bytes);
    return 1;
}

int parseBlob(std::FILE* file, char* line, std::vector<unsigned char>& bytes) {
    return isBlobHead(line) && parseBlobHeaderAndData(file, bytes, "hdr") &&
           parseBlobHeaderAndData(file, bytes, "data");
}

// A blob that fails doesn't stop the run, and a later one that is written hides it.
int writeSecure::loadIniConfiguration(const char* path) {
    const SecretFile file(path);
    if (!file.get())
        return 0;
    int result = 0;
    BlobBytes blob;
    Wiped<IniLine> line;
    while (readIniLine(file.get(), line.area.data())) {
        blob.clear();
        if (std::strcmp(line.area.data(), kEndOfBlobs) == 0)
            return result;
        if (!parseBlob(file.get(), line.area.data(), blob.get()))
            return 0;
        result = WriteSecureData(blob.get().data(), static_cast<int>(blob.get().size()));
    }
    return std::ferror(file.get()) == 0 ? result : 0; // blobs may stand where it can't be read
}

} // namespace zel::firmware
