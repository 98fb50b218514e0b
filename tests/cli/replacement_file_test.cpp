// SPDX-License-Identifier: MIT
// Files that take the place of others: modes, links, and what must not be replaced.
#include "cli/command/replacement_file.h"
#include "tests/cli/unprivileged.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

#include <fstream>
#include <sys/stat.h>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;
using test::textOf;

class Replacement : public ::testing::Test {
protected:
    static void write(const std::string& path, const std::string& text) {
        std::ofstream(path) << text;
    }

    // What becomes of `path`; the message when it can't be written.
    static std::string replace(const std::string& path) {
        ReplacementFile file(path);
        if (file.failure())
            return file.failure()->message;
        write(file.temporary(), "new");
        const Outcome kept = file.keep();
        return kept ? kept->message : "";
    }

    static int modeOf(const std::string& path) {
        struct stat status = {};
        return stat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 07777) : -1;
    }

    static int entries() {
        return static_cast<int>(std::distance(fs::directory_iterator("."), {}));
    }

private:
    test::TemporaryFolder folder_;
};

TEST_F(Replacement, NewFileHasTheModeThatTheUmaskLeaves) {
    const mode_t before = umask(0027);
    EXPECT_EQ(replace("a"), "");
    umask(before);
    EXPECT_EQ(modeOf("a"), 0640);
    EXPECT_EQ(textOf("a"), "new");
    EXPECT_EQ(entries(), 1);
}

TEST_F(Replacement, ReplacedFileKeepsItsMode) {
    write("a", "old");
    chmod("a", 0604);
    EXPECT_EQ(replace("a"), "");
    EXPECT_EQ(modeOf("a"), 0604);
    EXPECT_EQ(textOf("a"), "new");
}

TEST_F(Replacement, LinkStaysALinkAndItsFileIsReplaced) {
    fs::create_directory("there");
    write("there/a", "old");
    fs::create_symlink("there/a", "link");
    EXPECT_EQ(replace("link"), "");
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(textOf("there/a"), "new");
}

TEST_F(Replacement, FileThatIsNotKeptLeavesNothing) {
    write("a", "old");
    {
        const ReplacementFile file("a");
        write(file.temporary(), "half");
        EXPECT_EQ(entries(), 2);
    }
    EXPECT_EQ(textOf("a"), "old");
    EXPECT_EQ(entries(), 1);
}

TEST_F(Replacement, LongestNameIsNotTooLong) { EXPECT_EQ(replace(std::string(255, 'a')), ""); }

TEST_F(Replacement, DeviceIsNotReplaced) {
    fs::create_symlink("/dev/null", "null");
    EXPECT_EQ(replace("null"), "null can't be written: it is no regular file");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Replacement, ReadOnlyFileIsNotReplaced) {
    fs::permissions(".", fs::perms::all);
    write("a", "old");
    chmod("a", 0444);
    const test::Unprivileged rights;
    EXPECT_EQ(replace("a"), "a can't be written: Permission denied");
    EXPECT_EQ(textOf("a"), "old");
}

TEST_F(Replacement, FolderIsNoFile) {
    fs::create_directory("folder");
    EXPECT_EQ(replace("folder"), "folder can't be written: it is a folder");
    EXPECT_EQ(replace("new/"), "new/ can't be written: that names no file");
    EXPECT_EQ(replace(""), " can't be written: that names no file");
    EXPECT_EQ(entries(), 1);
}

TEST_F(Replacement, MissingFolderIsTold) {
    EXPECT_EQ(replace("none/a"), "none/a can't be written: No such file or directory");
}

} // namespace

} // namespace zel::cli
