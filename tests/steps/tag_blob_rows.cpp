// SPDX-License-Identifier: MIT
// References and key blobs that a reader on USB stores, four bytes a query; and the dump of its
// reports.
#include "family/tag/card_data.h"
#include "family/tag/services.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/files.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <algorithm>
#include <array>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kReferenceFailed = 0x80000000;
constexpr std::int64_t kBlobFailed = 0x81000000;

// What is stored whole, the last one of it.
std::string storedBlob() {
    const auto& blobs = apparatus().tag->blobs();
    return blobs.empty() || !blobs.back().isClosed ? "none" : shown(blobs.back().data);
}
const Sight kStored = {"in the reader", storedBlob};

// A cut reply holds no page number, which an echo must, but for that of page 0.
Step referencePage(const std::string& command, const std::string& whenFetched) {
    return query(command, ends(0, kReferenceFailed, "."), ends(0, kReferenceFailed, whenFetched),
                 ends(0, kReferenceFailed, whenFetched), ends(0, kReferenceFailed, whenFetched));
}

// The reader is asked to stand on the library's configuration, whatever becomes of that.
Steps referenceSteps(const std::string& opening) {
    return {query("898100", passes(1, 0, "+"), passes(1, 0, "+"), passes(1, 0, "+")),
            query(opening, ends(0, 0, "."), ends(0, kReferenceFailed, "."), passes(1, 0, "+"),
                  ends(0, 0, ".")),
            referencePage("8990000141424344", "."),
            referencePage("8990000245000000", "."),
            referencePage("899000FF00000000", "+"),
            order("9000", ends(0, kReferenceFailed, "+"))};
}

std::array<unsigned char, 5> reference = {0x41, 0x42, 0x43, 0x44, 0x45};

std::vector<Operation> referenceRows() {
    return {{.name = "KeyReference",
             .place = Place::PlusReports,
             .calls = {{"WriteSEKeyRefrence",
                        [] { return WriteSEKeyRefrence(reference.data(), 5, 2) + 0LL; }},
                       {"zeltag_WriteSEKeyRefrence",
                        [] { return zeltag_WriteSEKeyRefrence(reference.data(), 5, 2) + 0LL; }}},
             .sights = {kStored},
             .steps = referenceSteps("8990000001020500")},
            {.name = "FileReference",
             .place = Place::PlusReports,
             .calls = {{"WriteEV1FileRefrence",
                        [] { return WriteEV1FileRefrence(reference.data(), 5) + 0LL; }},
                       {"zeltag_WriteEV1FileRefrence",
                        [] { return zeltag_WriteEV1FileRefrence(reference.data(), 5) + 0LL; }}},
             .sights = {kStored},
             .steps = referenceSteps("8990000002010500")}};
}

std::array<unsigned char, 9> blob = {5, 6, 5, 0, 0x51, 0x52, 0x53, 0x54, 0x55};

// The data follow a header that was lost, to which this reader then has no reply; one good chunk
// stands for the whole blob.
Steps writeBlobSteps() {
    const Outcome lostHeader = ends(0, 0, ".", "89900001? 89900002?");
    return {query("8990000005060500", lostHeader, passes(1, 0, "+"), passes(1, 0, "+"),
                  passes(1, 0, "+")),
            query("8990000151525354", ends(0, kBlobFailed, "."), passes(1, 0, "+"),
                  passes(1, 0, "+"), passes(1, 0, "+")),
            query("8990000255000000", ends(0, kBlobFailed, "."), passes(1, 0, "+"),
                  passes(1, 0, "+"), passes(1, 0, "+")),
            query("899000FF00000000", ends(0, kBlobFailed, "."), ends(0, 0, "+"), ends(0, 0, "+"),
                  ends(0, 0, "+")),
            order("9000", ends(0, kBlobFailed, "+"))};
}

void prepareBlob() {
    EXPECT_EQ(WriteSecureData(blob.data(), 9), 1);
    wait(1'000'000);
    freshBuffer(8);
}

// A chunk that doesn't come is left out, and what is behind it moves up; the header's success is
// the result.
Steps readBlobSteps() {
    const Outcome leftOut = passes(1, 0, "!");
    return {query("8910000005060500", ends(0, kBlobFailed, "."), ends(0, 0, "."), ends(0, 0, "."),
                  ends(0, 0, ".")),
            query("89100001", ends(1, kBlobFailed, "!"), leftOut, leftOut, leftOut),
            query("89100002", ends(1, kBlobFailed, "!"), leftOut, leftOut, leftOut)};
}

std::vector<Operation> blobRows() {
    return {{.name = "WriteBlob",
             .place = Place::PlusReports,
             .calls = {{"WriteSecureData", [] { return WriteSecureData(blob.data(), 9) + 0LL; }}},
             .sights = {kStored},
             .steps = writeBlobSteps()},
            {.name = "WriteBlobOfAFile",
             .place = Place::PlusReports,
             .calls = {{"LoadIniFile", [] { return LoadIniFile(iniFile()) + 0LL; }}},
             .sights = {kStored},
             .steps = writeBlobSteps()},
            {.name = "ReadBlob",
             .place = Place::PlusReports,
             .calls = {{"ReadSecureData",
                        [] { return ReadSecureData(blob.data(), buffer().data()) + 0LL; }}},
             .prepare = prepareBlob,
             .sights = {kBuffer},
             .steps = readBlobSteps(),
             .again = [] { freshBuffer(8); }}};
}

// What isn't whole is removed, and there is no error word.
Operation dumpRow() {
    Steps steps;
    for (const char* opcode : {"80", "81", "82", "83", "84", "85", "87", "88", "89", "8A", "8B",
                               "8C", "8D", "8E", "8F"}) {
        const bool isLong = std::string("80 81 8A 8D 8F").find(opcode) != std::string::npos;
        steps.push_back(
            query(opcode, ends(0, 0, "."), passes(1, 0, isLong ? "!" : "+"), passes(1, 0, "!")));
    }
    return {
        .name = "DumpOfReports",
        .place = Place::TagReports,
        .calls = {{"DumpRawFeatureReports", [] { return DumpRawFeatureReports("dump.txt") + 0LL; }},
                  {"zeltag_DumpRawFeatureReports",
                   [] { return zeltag_DumpRawFeatureReports("dump.txt") + 0LL; }}},
        .prepare = [] { removeFile("dump.txt"); },
        .sights = {{"the file", [] { return textOf("dump.txt"); }}},
        .steps = steps};
}

} // namespace

std::vector<Operation> tagBlobRows() {
    std::vector<Operation> rows = referenceRows();
    rows += blobRows();
    rows += {dumpRow()};
    return rows;
}

} // namespace zel::test::steps
