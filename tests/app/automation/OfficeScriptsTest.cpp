#include <gtest/gtest.h>

#include "app/automation/OfficeScripts.h"

namespace pellar {
namespace {

TEST(OfficeScripts, AsksWordForThePathsOfItsDocuments) {
  EXPECT_EQ(OfficeScripts::pathsByName(OfficeApp::word),
            R"(set sep to character id 9
set acc to {}
tell application "Microsoft Word"
    set theDocs to every document
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                set end of acc to (name of d as string) & sep & (POSIX path of (full name of d as string))
            end if
        end try
    end repeat
end tell
return acc)");
}

TEST(OfficeScripts, AsksEachApplicationForItsOwnKindOfDocument) {
  EXPECT_EQ(OfficeScripts::pathsByName(OfficeApp::excel),
            R"(set sep to character id 9
set acc to {}
tell application "Microsoft Excel"
    set theDocs to every workbook
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                set end of acc to (name of d as string) & sep & (POSIX path of (full name of d as string))
            end if
        end try
    end repeat
end tell
return acc)");
  EXPECT_EQ(OfficeScripts::pathsByName(OfficeApp::powerpoint),
            R"(set sep to character id 9
set acc to {}
tell application "Microsoft PowerPoint"
    set theDocs to every presentation
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                set end of acc to (name of d as string) & sep & (POSIX path of (full name of d as string))
            end if
        end try
    end repeat
end tell
return acc)");
}

TEST(OfficeScripts, SavesTheChangedDocuments) {
  EXPECT_EQ(OfficeScripts::saveAll(OfficeApp::word, true),
            R"(set n to 0
tell application "Microsoft Word"
    set theDocs to every document
    repeat with d in theDocs
        try
            if (path of d as string) is not "" and (saved of d) is false then
                save d
                set n to n + 1
            end if
        end try
    end repeat
end tell
return n)");
}

TEST(OfficeScripts, SavesAllDocuments) {
  EXPECT_EQ(OfficeScripts::saveAll(OfficeApp::excel, false),
            R"(set n to 0
tell application "Microsoft Excel"
    set theDocs to every workbook
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                save d
                set n to n + 1
            end if
        end try
    end repeat
end tell
return n)");
  EXPECT_EQ(OfficeScripts::saveAll(OfficeApp::powerpoint, false),
            R"(set n to 0
tell application "Microsoft PowerPoint"
    set theDocs to every presentation
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                save d
                set n to n + 1
            end if
        end try
    end repeat
end tell
return n)");
}

TEST(OfficeScripts, MakesANewDocumentOfEachKind) {
  EXPECT_EQ(OfficeScripts::newDocument(OfficeApp::word),
            "tell application \"Microsoft Word\"\nactivate\nmake new document\nend tell");
  EXPECT_EQ(OfficeScripts::newDocument(OfficeApp::excel),
            "tell application \"Microsoft Excel\"\nactivate\nmake new workbook\nend tell");
  EXPECT_EQ(OfficeScripts::newDocument(OfficeApp::powerpoint),
            "tell application \"Microsoft PowerPoint\"\nactivate\nmake new presentation\nend tell");
  EXPECT_EQ(OfficeScripts::newDocument(OfficeApp::outlook),
            "tell application \"Microsoft Outlook\"\nactivate\nopen (make new outgoing message)\nend tell");
}

TEST(OfficeScripts, SavesUnderAnotherNameInEachApplicationsOwnWords) {
  EXPECT_EQ(OfficeScripts::saveAs(OfficeApp::word, "Old.docx", "/d/New.docx"),
            R"(tell application "Microsoft Word"
    set d to first document whose name is "Old.docx"
    save as d file name "/d/New.docx"
    return "ok"
end tell)");
  EXPECT_EQ(OfficeScripts::saveAs(OfficeApp::excel, "Old.xlsx", "/d/New.xlsx"),
            R"(tell application "Microsoft Excel"
    set d to first workbook whose name is "Old.xlsx"
    save workbook as d filename "/d/New.xlsx"
    return "ok"
end tell)");
  EXPECT_EQ(OfficeScripts::saveAs(OfficeApp::powerpoint, "Old.pptx", "/d/New.pptx"),
            R"(tell application "Microsoft PowerPoint"
    set d to first presentation whose name is "Old.pptx"
    save d in "/d/New.pptx"
    return "ok"
end tell)");
}

TEST(OfficeScripts, QuotesTheNamesOfDocumentsAndFiles) {
  EXPECT_EQ(OfficeScripts::saveAs(OfficeApp::word, R"(a"b\c.docx)", "/d/\"\\\".docx"),
            R"(tell application "Microsoft Word"
    set d to first document whose name is "a\"b\\c.docx"
    save as d file name "/d/\"\\\".docx"
    return "ok"
end tell)");
}

TEST(OfficeScripts, OutlookHasNoDocuments) {
  EXPECT_EQ(OfficeScripts::pathsByName(OfficeApp::outlook), std::nullopt);
  EXPECT_EQ(OfficeScripts::saveAll(OfficeApp::outlook, true), std::nullopt);
  EXPECT_EQ(OfficeScripts::saveAll(OfficeApp::outlook, false), std::nullopt);
  EXPECT_EQ(OfficeScripts::saveAs(OfficeApp::outlook, "a.eml", "/d/b.eml"), std::nullopt);
}

}  // namespace
}  // namespace pellar
