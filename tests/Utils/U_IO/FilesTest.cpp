#include "Utils/U_IO/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Utils/U_IO/FileNames.h"

namespace KM::IO {
namespace {

namespace fs = std::filesystem;
using Test::InChild;
using Test::LogCapture;
using Test::TempFolder;
using Names = std::vector<std::string>;
using Verbose::EMessageType;

const std::string WithNul("a\0b", 3);

std::string BackSlashes(std::string name) {
    for (char& c : name)
        if (c == '/') c = '\\';
    return name;
}

// Root may do everything; nobody may do nothing in folders of others.
void BecomeNobody(const TempFolder& temp) {
    fs::permissions(temp / "", fs::perms{0755});
    if (geteuid() == 0 && setuid(65534) != 0) throw "still root";
}

TEST(FileExist, FindsFilesAndFolders) {
    const TempFolder temp;
    temp.Write("a.bin", "1");
    fs::create_directory(temp / "folder");
    EXPECT_TRUE(FileExist(temp / "a.bin"));
    EXPECT_TRUE(FileExist(BackSlashes(temp / "a.bin")));
    EXPECT_TRUE(FileExist(temp / "folder"));
    EXPECT_FALSE(FileExist(temp / "b.bin"));
    EXPECT_FALSE(FileExist(temp / "a.bin/b"));
    EXPECT_FALSE(FileExist(temp / "no/a.bin"));
    EXPECT_FALSE(FileExist(""));
}

TEST(FileExist, DoesNotCountTheFolderItselfAndItsParent) {
    const TempFolder temp;
    for (const char* name : {".", "..", "", "*", "?", "??"}) EXPECT_FALSE(FileExist(temp / name)) << name;
}

TEST(FileExist, TakesPatterns) {
    const TempFolder temp;
    temp.Write("abc.bin", "");
    for (const char* fits : {"*", "a*", "*.bin", "a?c.bin", "a**c*", "???.???", "abc.bin*", "*c*n"})
        EXPECT_TRUE(FileExist(temp / fits)) << fits;
    for (const char* fitsNot : {"?", "b*", "*.bi", "abc.bin?", "a*d*", "A*"})
        EXPECT_FALSE(FileExist(temp / fitsNot)) << fitsNot;
    fs::create_directory(temp / "folder");
    temp.Write("folder/abc.bin", "");
    EXPECT_FALSE(FileExist(temp / "f*/abc.bin")) << "folders are taken literally";
}

TEST(FileExist, RefusesHostileNames) {
    const TempFolder temp;
    temp.Write("a", "");
    EXPECT_FALSE(FileExist(temp / WithNul));
    EXPECT_FALSE(FileExist(temp / std::string(5000, 'a')));
    EXPECT_FALSE(FileExist(temp / (std::string(5000, '*') + "b")));
    EXPECT_FALSE(FileExist(std::string(1'000'000, '/') + "a/"));
}

TEST(FileExist, TakesLiterallyWhatIsNotWild) {
    const TempFolder temp;
    for (const char* name : {"a b", " a", "a'b", "a\"b", "[a]", "a;b", "$a", "\xC3\xA4", "a\nb", "-a", "%s"}) {
        EXPECT_FALSE(FileExist(temp / name)) << name;
        temp.Write(name, "12");
        EXPECT_TRUE(FileExist(temp / name)) << name;
        EXPECT_EQ(FileSize(temp / name), 2) << name;
        FilesDelete(temp / name);
        EXPECT_FALSE(temp.Has(name)) << name;
    }
}

TEST(FileSize, IsInBytes) {
    const TempFolder temp;
    temp.Write("a", "12345");
    EXPECT_EQ(FileSize(temp / "a"), 5);
    temp.Write("huge", "");
    fs::resize_file(temp / "huge", 5'000'000'000);
    EXPECT_EQ(FileSize(temp / "huge"), 5'000'000'000) << "beyond 32 bits";
}

TEST(FileSize, IsZeroWithoutAFile) {
    const TempFolder temp;
    temp.Write("a", "1");
    for (const std::string& name : {temp / "no", temp / "", std::string(), temp / WithNul, temp / "a/b"})
        EXPECT_EQ(FileSize(name), 0) << name;
}

TEST(FileTimes, AreSecondsSinceTheEpoch) {
    const TempFolder temp;
    const std::int64_t before = std::time(nullptr) - 1;
    temp.Write("a", "1");
    const timespec times[] = {{1'000'000'000, 0}, {2'000'000'000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, (temp / "a").c_str(), times, 0), 0);
    EXPECT_EQ(AccessTime(temp / "a"), 1'000'000'000);
    EXPECT_EQ(ModificationTime(temp / "a"), 2'000'000'000);
    EXPECT_EQ(FileTimeStamp(temp / "a"), 2'000'000'000);
    EXPECT_GE(CreationTime(temp / "a"), before);
    EXPECT_LE(CreationTime(temp / "a"), std::time(nullptr));
}

TEST(FileTimes, AreMinusOneWithoutAFile) {
    for (const std::string& name : {std::string("/no/such/file"), std::string(), WithNul}) {
        EXPECT_EQ(AccessTime(name), -1);
        EXPECT_EQ(CreationTime(name), -1);
        EXPECT_EQ(ModificationTime(name), -1);
        EXPECT_EQ(FileTimeStamp(name), -1);
    }
}

TEST(MkDir, MakesEachLevel) {
    const TempFolder temp;
    MkDir(temp / "a/b b /c");
    EXPECT_TRUE(fs::is_directory(temp / "a/b b/c"));
    MkDir(BackSlashes(temp / "d\\e\\"));
    EXPECT_TRUE(fs::is_directory(temp / "d/e"));
    MkDir(temp / "d/e");
    EXPECT_EQ(temp.Names(), (Names{"a", "d"}));
}

TEST(MkDir, IgnoresFailures) {
    const TempFolder temp;
    temp.Write("file", "1");
    MkDir(temp / "file/a");
    MkDir(temp / std::string(5000, 'a'));
    MkDir(temp / WithNul);
    MkDir("");
    MkDir("/");
    EXPECT_EQ(temp.Names(), Names{"file"});
    EXPECT_EQ(temp.Bytes("file"), "1");
}

TEST(FilesDelete, DeletesWhatFits) {
    const TempFolder temp;
    for (const char* name : {"k.1", "k.2", "k", "l.1", ".k"}) temp.Write(name, "");
    FilesDelete(temp / "k.*");
    EXPECT_EQ(temp.Names(), (Names{".k", "k", "l.1"}));
    FilesDelete(BackSlashes(temp / "l.1"));
    EXPECT_EQ(temp.Names(), (Names{".k", "k"}));
    FilesDelete(temp / "none*");
    FilesDelete(temp / "");
    FilesDelete("");
    FilesDelete(temp / WithNul);
    EXPECT_EQ(temp.Names(), (Names{".k", "k"}));
    FilesDelete(temp / "*");
    EXPECT_TRUE(temp.Names().empty());
}

TEST(FilesDelete, KeepsFoldersAndWhatLinksLeadTo) {
    const TempFolder temp;
    fs::create_directory(temp / "folder");
    temp.Write("folder/a", "1");
    fs::create_directory_symlink(temp / "folder", temp / "link");
    temp.Write("read-only", "");
    fs::permissions(temp / "read-only", fs::perms{0444});
    FilesDelete(temp / "*");
    EXPECT_EQ(temp.Names(), Names{"folder"});
    EXPECT_EQ(temp.Bytes("folder/a"), "1");
}

TEST(FilesDelete, WithoutFolderWorksInTheCurrentOne) {
    const TempFolder temp;
    temp.Write("a.x", "");
    temp.Write("b.y", "");
    const fs::path before = fs::current_path();
    fs::current_path(temp / "");
    FilesDelete("*.x");
    EXPECT_EQ(temp.Names(), Names{"b.y"});
    fs::current_path(before);
}

TEST(FilesDelete, ValidatesTheFolder) {
    const TempFolder temp;
    fs::create_directory(temp / "a");
    temp.Write("a/b c.x", "");
    FilesDelete(temp / "a /b c.x");
    EXPECT_TRUE(fs::is_empty(temp / "a"));
}

TEST(FilesDelete, OfBlanksNeverReachesTheRoot) {
    const TempFolder temp;
    temp.Write("a", "");
    FilesDelete(std::string(" ").append(temp / "*"));
    DirectoryDelete(std::string(" ").append(temp / ""));
    EXPECT_EQ(temp.Names(), Names{"a"});
}

// On this system a name can hold a back-slash. As a text it would name another file.
TEST(Files, OfUnspeakableNamesAreLeftAlone) {
    const TempFolder temp;
    fs::create_directory(temp / "a");
    temp.Write("a/b", "1");
    temp.Write("a\\b", "2");
    FilesDelete(temp / "a*");
    EXPECT_EQ(temp.Bytes("a/b"), "1");
    Names names;
    EnumerateFiles(temp / "", names);
    EXPECT_TRUE(names.empty());
}

TEST(DirectoryDelete, DeletesAllBelow) {
    const TempFolder temp;
    fs::create_directories(temp / "a/b/c");
    fs::create_directories(temp / "a/empty");
    for (const char* name : {"a/1", "a/b/2", "a/b/c/.3", "a/b/back\\slash", "a/b/*"}) temp.Write(name, "x");
    fs::permissions(temp / "a/1", fs::perms{0});
    DirectoryDelete(BackSlashes(temp / "a"));
    EXPECT_TRUE(temp.Names().empty());
}

TEST(DirectoryDelete, NeverFollowsALink) {
    const TempFolder temp;
    fs::create_directories(temp / "kept/inner");
    temp.Write("kept/file", "1");
    fs::create_directory(temp / "a");
    fs::create_directory_symlink(temp / "kept", temp / "a/link");
    fs::create_symlink(temp / "kept/file", temp / "a/fileLink");
    fs::create_symlink(temp / "no", temp / "a/dangling");
    DirectoryDelete(temp / "a/");
    EXPECT_EQ(temp.Names(), Names{"kept"});

    fs::create_directory_symlink(temp / "kept", temp / "link");
    DirectoryDelete(temp / "link/");
    EXPECT_EQ(temp.Names(), Names{"kept"}) << "the link itself went";
    EXPECT_EQ(temp.Bytes("kept/file"), "1");
    EXPECT_TRUE(fs::is_directory(temp / "kept/inner"));
}

// In a process whose root is a temporary folder: nobody's files are at stake, should it ever fail.
TEST(DirectoryDelete, RefusesTheRoot) {
    const TempFolder temp;
    fs::create_directories(temp / "a/inner");
    temp.Write("a/file", "1");
    const std::string left = InChild([&temp]() -> std::string {
        if (geteuid() != 0 && unshare(CLONE_NEWUSER) != 0) return "no own root";
        if (chroot((temp / "").c_str()) != 0) return "no own root";
        fs::create_directory_symlink("/", "/a/root");
        fs::current_path("/a");
        for (const char* name : {"/", "", "\\", "//", "/.", "/..", "/a/..", "\\a\\..\\", " /", " ", " /a", ".", "..",
                                 "./", "../", "../a/.", "/a/root/", "/a/root/."})
            DirectoryDelete(name);
        return fs::exists("/a/file") && fs::exists("/a/inner") ? "kept" : "gone";
    });
    // A user who may not change the root of a process could not harm it either.
    EXPECT_TRUE(left == "kept" || left == "no own root") << left;
}

TEST(DirectoryDelete, IgnoresWhatIsNoFolder) {
    const TempFolder temp;
    temp.Write("file", "1");
    fs::create_symlink(temp / "file", temp / "link");
    for (const std::string& name :
         {temp / "file", temp / "link", temp / "no", temp / WithNul, temp / std::string(5000, 'a')})
        DirectoryDelete(name);
    EXPECT_EQ(temp.Names(), (Names{"file", "link"}));
}

// Deeper than a path can be long, and than a process may hold folders open.
TEST(DirectoryDelete, GoesDeep) {
    const TempFolder temp;
    const std::string done = InChild([&temp]() -> std::string {
        const std::string name(20, 'a');
        fs::current_path(temp / "");
        for (int level = 0; level < 300; ++level) {
            if (level % 10 == 0 && mkdir("b", 0777) != 0) return "no sibling";
            if (mkdir(name.c_str(), 0777) != 0 || chdir(name.c_str()) != 0) return "no tree";
        }
        const rlimit few{16, 16};
        if (chdir("/") != 0 || setrlimit(RLIMIT_NOFILE, &few) != 0) return "no limit";
        DirectoryDelete(temp / name);
        return "done";
    });
    EXPECT_EQ(done, "done");
    EXPECT_EQ(temp.Names(), Names{"b"});
}

// What may not be entered stays; all beside it goes.
TEST(DirectoryDelete, GoesOnBehindAFolderThatIsClosed) {
    const TempFolder temp;
    const std::string done = InChild([&temp]() -> std::string {
        for (const char* name : {"a/1", "a/closed/inner", "a/unreadable/inner", "a/empty", "a/z/inner"})
            fs::create_directories(temp / name);
        for (const char* name : {"a", "a/z"}) fs::permissions(temp / name, fs::perms::all);
        fs::permissions(temp / "a/closed", fs::perms::owner_read | fs::perms::others_read);
        fs::permissions(temp / "a/unreadable", fs::perms::owner_exec | fs::perms::others_exec);
        fs::permissions(temp / "a/empty", fs::perms::none);
        BecomeNobody(temp);
        DirectoryDelete(temp / "a");
        return "done";
    });
    EXPECT_EQ(done, "done");
    Names left;
    for (const fs::directory_entry& entry : fs::directory_iterator(temp / "a"))
        left.push_back(entry.path().filename().string());
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (Names{"closed", "unreadable"}));
    fs::permissions(temp / "a/closed", fs::perms::owner_all);
    fs::permissions(temp / "a/unreadable", fs::perms::owner_all);
    EXPECT_TRUE(fs::exists(temp / "a/closed/inner"));
    EXPECT_TRUE(fs::exists(temp / "a/unreadable/inner"));
}

TEST(Copy, ReplacesTheTarget) {
    const TempFolder temp;
    temp.Write("from", std::string("1\0 2\r\n", 6));
    temp.Write("to", "a longer old content");
    EXPECT_TRUE(Copy(temp / "from", BackSlashes(temp / "to")));
    EXPECT_EQ(temp.Bytes("to"), std::string("1\0 2\r\n", 6));
    EXPECT_TRUE(Copy(temp / "from", temp / "new"));
    EXPECT_EQ(temp.Names(), (Names{"from", "new", "to"}));
}

TEST(Copy, TakesTheAttributesToo) {
    const TempFolder temp;
    temp.Write("from", "1");
    temp.Write("to", "2");
    fs::permissions(temp / "from", fs::perms{0440});
    fs::permissions(temp / "to", fs::perms{0400});
    EXPECT_TRUE(Copy(temp / "from", temp / "to"));
    EXPECT_EQ(fs::status(temp / "to").permissions(), fs::perms{0440});
    EXPECT_EQ(temp.Bytes("to"), "1");
}

TEST(Copy, TakesTheLongestNames) {
    const TempFolder temp;
    const std::string from(255, 'a');
    const std::string to(255, 'b');
    temp.Write(from, "1");
    EXPECT_TRUE(Copy(temp / from, temp / to));
    EXPECT_EQ(temp.Bytes(to), "1");
    EXPECT_EQ(temp.Names(), (Names{from, to}));
}

TEST(Copy, OntoItselfLosesNothing) {
    const TempFolder temp;
    temp.Write("a", "1");
    Copy(temp / "a", temp / "a");
    EXPECT_EQ(temp.Bytes("a"), "1");
    EXPECT_EQ(temp.Names(), Names{"a"});
}

TEST(Copy, ThatFailsLeavesTheTarget) {
    const TempFolder temp;
    temp.Write("to", "kept");
    fs::create_directory(temp / "folder");
    for (const std::string& from : {temp / "no", temp / "folder", std::string(), temp / WithNul}) {
        EXPECT_FALSE(Copy(from, temp / "to")) << from;
        EXPECT_EQ(temp.Bytes("to"), "kept");
    }
    for (const std::string& to : {temp / "folder", temp / "no/a", temp / "to/a", std::string(), temp / WithNul})
        EXPECT_FALSE(Copy(temp / "to", to)) << to;
    EXPECT_EQ(temp.Names(), (Names{"folder", "to"})) << "no half file";
    EXPECT_TRUE(fs::is_empty(temp / "folder"));
}

TEST(Copy, NeverReplacesADevice) {
    const TempFolder temp;
    temp.Write("from", "1");
    fs::create_symlink("/dev/null", temp / "device");
    EXPECT_FALSE(Copy(temp / "from", temp / "device"));
    EXPECT_TRUE(fs::is_symlink(temp / "device"));
}

TEST(Enumerate, ListsByKind) {
    const TempFolder temp;
    for (const char* name : {"b", "a.x", ".c"}) temp.Write(name, "");
    fs::create_directory(temp / "folder");
    fs::create_directory(temp / ".d");
    fs::create_symlink(temp / "no", temp / "dangling");
    const std::string folder = BackSlashes(temp / "");
    Names names{"before"};
    EnumerateFiles(folder, names);
    EXPECT_EQ(names, (Names{"before", ".c", "a.x", "b", "dangling"}));
    names.clear();
    EnumerateFolders(folder, names);
    EXPECT_EQ(names, (Names{".d", "folder"}));
    names.clear();
    EnumerateFoldersAndFiles(folder, names);
    EXPECT_EQ(names, (Names{".c", ".d", "a.x", "b", "dangling", "folder"}));
}

// The star stands directly behind the text.
TEST(Enumerate, WithoutSeparatorListsWhatBeginsWithTheName) {
    const TempFolder temp;
    temp.Write("ab", "");
    temp.Write("b", "");
    fs::create_directory(temp / "a");
    Names names;
    EnumerateFolders(temp / "a", names);
    EXPECT_EQ(names, Names{"a"});
    EnumerateFiles(temp / "a", names);
    EXPECT_EQ(names, (Names{"a", "ab"}));
}

TEST(Enumerate, OfNothingIsEmpty) {
    const TempFolder temp;
    temp.Write("file", "");
    Names names;
    for (const std::string& folder : {temp / "no/", temp / "file/", temp / WithNul + "/"}) {
        EnumerateFiles(folder, names);
        EnumerateFolders(folder, names);
        EnumerateFoldersAndFiles(folder, names);
        EXPECT_TRUE(names.empty());
    }
}

class Collect : public ForEachFile::Action {
public:
    void operator()(const std::string& name) override {
        names.push_back(name);
        if (!deletes.empty()) FilesDelete(deletes);
    }
    Names names;
    std::string deletes;
};

TEST(ForEachFile, CallsTheActionForEachMatch) {
    const TempFolder temp;
    for (const char* name : {"b.x", "a.x", "c.y"}) temp.Write(name, "");
    Collect collect;
    ForEachFile::Iterator(temp / "*.x", collect);
    EXPECT_EQ(collect.names, (Names{"a.x", "b.x"}));
    ForEachFile::Iterator(temp / "*.z", collect);
    ForEachFile::Iterator("", collect);
    EXPECT_EQ(collect.names.size(), 2u);
}

TEST(ForEachFile, LetsTheActionDelete) {
    const TempFolder temp;
    for (const char* name : {"a.x", "b.x"}) temp.Write(name, "");
    Collect collect;
    collect.deletes = temp / "*.x";
    ForEachFile::Iterator(temp / "*.x", collect);
    EXPECT_EQ(collect.names, (Names{"a.x", "b.x"}));
}

TEST(Indent, IsKept) {
    EXPECT_EQ(Indent(), 0);
    Indent() = 3;
    EXPECT_EQ(Indent(), 3);
    Indent() = 0;
}

TEST(CanIWriteInFolder, TriesAndLeavesNothing) {
    const TempFolder temp;
    EXPECT_TRUE(CanIWriteInFolder(temp / ""));
    EXPECT_TRUE(CanIWriteInFolder(BackSlashes(temp / "")));
    EXPECT_TRUE(temp.Names().empty());
}

TEST(CanIWriteInFolder, IsFalseWhereNothingCanBeMade) {
    const TempFolder temp;
    temp.Write("file", "1");
    for (const std::string& folder : {temp / "no/", temp / "file/", temp / WithNul + "/"})
        EXPECT_FALSE(CanIWriteInFolder(folder)) << folder;
    EXPECT_EQ(InChild([&temp] {
                  BecomeNobody(temp);
                  return std::string(CanIWriteInFolder(temp / "") ? "yes" : "no");
              }),
              geteuid() == 0 ? "no" : "yes");
    EXPECT_EQ(temp.Names(), Names{"file"});
}

TEST(CanIWriteInFolder, DoesNotWriteThroughALink) {
    const TempFolder temp;
    temp.Write("kept", "1");
    fs::create_symlink(temp / "kept", temp / "$$$.$$$");
    EXPECT_TRUE(CanIWriteInFolder(temp / ""));
    EXPECT_EQ(temp.Bytes("kept"), "1");
}

TEST(Archive, CopiesBesideTheFileWithTheTime) {
    const TempFolder temp;
    temp.Write("log.old.xml", "text");
    const LogCapture log;
    Archive(temp / "log.old.xml");
    const Names names = temp.Names();
    ASSERT_EQ(names.size(), 2u);
    const std::string copy = names[0] == "log.old.xml" ? names[1] : names[0];
    std::string shape = copy;
    for (char& c : shape)
        if (c >= '0' && c <= '9') c = '0';
    EXPECT_EQ(shape, "log.old.Y0000M00D00H00M00S00.xml");
    EXPECT_EQ(temp.Bytes(copy), "text");
    EXPECT_EQ(log.Texts(EMessageType::Info),
              Names{"Arhiving file name: " + temp / "log.old.xml" + " to: " + temp / copy});
    EXPECT_EQ(log.Lines().size(), 1u);
}

TEST(Archive, OfNothingLogsAndMakesNothing) {
    const TempFolder temp;
    const LogCapture log;
    Archive(temp / "no.xml");
    EXPECT_TRUE(temp.Names().empty());
    EXPECT_EQ(log.Count(EMessageType::Info), 1);
}

TEST(ReadWebPage, IsNotThere) { EXPECT_EQ(ReadWebPage("https://example.org"), "Not implemented!"); }

}  // namespace
}  // namespace KM::IO
