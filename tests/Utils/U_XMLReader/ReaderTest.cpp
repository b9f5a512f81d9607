#include "Utils/U_XMLReader/Reader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Utils/U_IO/ToFile.h"
#include "Utils/U_XMLReader/EventJournal.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

using Test::EventJournal;
using Test::InChild;
using Test::LogCapture;
using Test::TempFolder;
using Verbose::EMessageType;

TEST(Reader, ReadsAFile) {
    const TempFolder folder;
    folder.Write("a.xml", "<a b='&lt;'>&amp;</a>");
    EventJournal journal;
    Read(folder / "a.xml", journal, true);
    EXPECT_EQ(journal.Take(), "<a b=<;\"&\"\\");
    Read(folder / "a.xml", journal, false);
    EXPECT_EQ(journal.Take(), "<a b=&lt;;\"&amp;\"\\");
    Element root("s");
    ReadElement(folder / "a.xml", root, true);
    EXPECT_EQ(root.N(), "a");
    EXPECT_EQ(root.V(), "&");
    EXPECT_EQ(root.AttributeValue("b"), "<");
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.xml"});
}

TEST(Reader, AFileHasAllItsBytes) {
    const TempFolder folder;
    const std::string value = std::string("\r\n\0\x1A", 4) + std::string(100000, 'x');
    folder.Write("a.xml", "<a b='" + value + "'/>");
    Element root("s");
    ReadElement(folder / "a.xml", root, false);
    EXPECT_EQ(root.AttributeValue("b"), value);
}

TEST(Reader, EachFileIsASession) {
    EXPECT_EQ(InChild([] {
                  const TempFolder folder;
                  folder.Write("a.xml", "<s><a>1</a></s>");
                  const int before = GetSettingSession();
                  Element root("s");
                  ReadElement(folder / "a.xml", root, true);
                  if (GetSettingSession() != 2 * before) return std::string("not doubled");
                  if (root["a"].SettingSession() != 2 * before) return std::string("not stamped");
                  if (SettingSessionNames().back() != "Reading: \"" + (folder / "a.xml") + "\" configuration file;")
                      return SettingSessionNames().back();
                  ReadElementFromString("<s/>", root, true);
                  return std::string(GetSettingSession() == 2 * before ? "" : "a text opened a session");
              }),
              "");
}

TEST(Reader, AMissingFileIsNoErrorButASession) {
    EXPECT_EQ(InChild([] {
                  const TempFolder folder;
                  EventJournal journal;
                  const LogCapture log;
                  const int before = GetSettingSession();
                  Read(folder / "none.xml", journal, true);
                  if (!log.Lines().empty() || !journal.journal.empty()) return std::string("said something");
                  if (GetSettingSession() != 2 * before) return std::string("no session");
                  const std::string expected = "Reading: \"" + (folder / "none.xml") + "\" configuration file;";
                  return std::string(SettingSessionNames().back() == expected ? "" : "no name");
              }),
              "");
}

TEST(Reader, WhatHasNoBytesHasNoEvents) {
    const TempFolder folder;
    folder.Write("empty.xml", "");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EventJournal journal;
    for (const std::string& name :
         {folder / "empty.xml", folder / "", folder / "pipe", std::string("/dev/null"), std::string()}) {
        SCOPED_TRACE(name);
        Read(name, journal, true);
        EXPECT_EQ(journal.journal, "");
    }
}

TEST(Reader, SaysNothingWhenAllIsWell) {
    const TempFolder folder;
    folder.Write("a.xml", "<a/>");
    const LogCapture log;
    EventJournal journal;
    Read(folder / "a.xml", journal, true);
    EXPECT_TRUE(log.Lines().empty());
}

TEST(Reader, KeepsWhatWasReadBeforeARefusal) {
    const TempFolder folder;
    folder.Write("bad.xml", "<s><a>1</a>\n<b x/></s>");
    Element root("t");
    const LogCapture log;
    try {
        ReadElement(folder / "bad.xml", root, true);
        FAIL() << "no refusal";
    } catch (const char* text) { EXPECT_STREQ(text, "Bad XML File"); }
    EXPECT_EQ(log.Texts(EMessageType::Error),
              std::vector<std::string>{
                  "Expected an equal sign while parsing attributes afterx, InLine: 1. Execution Aborted"});
    EXPECT_EQ(root.N(), "s");
    EXPECT_EQ(root.ToString("a"), "1");
    EXPECT_EQ(root.Children().size(), 2u);
    folder.Write("good.xml", "<s><a>2</a></s>");
    ReadElement(folder / "good.xml", root, true);
    EXPECT_EQ(root.ToString("a"), "2") << "the next reading starts afresh";
}

}  // namespace
}  // namespace KM::XML
