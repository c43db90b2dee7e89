#include <gtest/gtest.h>

#include <filesystem>

#include "captions/caption_checks.h"
#include "captions/ult_export.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon {
namespace {

// Bytes from hexadecimal digits; blanks are for reading only.
std::string hex(std::string_view digits) {
  std::string out, pair;
  for (char c : digits) {
    if (c == ' ') continue;
    pair += c;
    if (pair.size() == 2) {
      out += static_cast<char>(std::stoi(pair, nullptr, 16));
      pair.clear();
    }
  }
  return out;
}

std::string header(const char* countHex) {
  std::string h = hex("554c544543480031 2e333000 0002 1e00") + hex(countHex) +
                  hex("00000100 0f 150001000000010001000000");
  for (int i = 0; i < 15; ++i) h += hex("000000000000000000000000ff");
  return h;
}

struct UltExport : ::testing::Test {
  testing::TestStation ts;
  FormCCult form;
  std::string dir = testing::tempDir("ult");
  void SetUp() override { installCaptionChecks(ts.st); }

  // The whole command: scan, file dialog, the form's OK.
  std::string exportUlt(std::u16string_view script, const std::string& name = "out.ult") {
    ts.open(script);
    const std::string path = dir + "/" + name;
    std::filesystem::remove(path);
    ts.ui.savePaths.push_back(path);
    EXPECT_TRUE(mnu_cc_ult(ts.st, form));
    EXPECT_TRUE(form.visible);
    formCCultProximo(ts.st, form);
    EXPECT_FALSE(form.visible);
    return testing::readFile(path);
  }
};

TEST_F(UltExport, TwoCaptionsATenthApartShareNoClear) {
  EXPECT_EQ(exportUlt(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n\n"
                      u"CAP[0NL 00:00:12:03>00:00:14:00]\nOk\n\n"
                      u"CAP[0NC 00:00:20:00>00:00:22:00]\nNo\n"),
            header("06000000") + hex("f1 0900 0000 0800 142e 142c 00") +
                hex("f1 1000 0000 0a00 1420 1478 486921 142c 142f 00") +
                hex("f1 0f00 0000 0c03 1420 1470 4f6b 142c 142f 00") + hex("f1 0700 0000 0e00 142c 00") +
                hex("f1 0f00 0000 1400 1420 1478 4e6f 142c 142f 00") + hex("f1 0700 0000 1600 142c 00"));
  EXPECT_EQ(ts.ui.saveRequests.at(0).defaultName, u"Script1.ult");
}

TEST_F(UltExport, PacsOfEachCaption) {
  const struct {
    const char* name;
    const char16_t* script;
    std::string records;
    std::vector<u16> boxes;
  } cases[] = {
      {"italic four rows right-aligned: no padding nor italic code",
       u"CAP[1IR 01:02:03:04>01:02:05:04]\nA\nBB\nCCC\nDDDDD\n",
       hex("f1 0900 0102 0104 142e 142c 00") +
           hex("f1 1e00 0102 0304 1420 105c 41 135c 4242 137c 434343 145c 4444444444 142c 142f 00") +
           hex("f1 0700 0102 0504 142c 00")},
      {"a position out of range leaves the PAC out", u"CAP[FNC 00:00:10:00>00:00:12:00]\nHi\n",
       hex("f1 0900 0000 0800 142e 142c 00") + hex("f1 0d00 0000 0a00 1420 4869 142c 142f 00") +
           hex("f1 0700 0000 0c00 142c 00"),
       {u"RANGE ERROR IN FIRSTBYTE"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ts.ui.boxes.clear();
    EXPECT_EQ(exportUlt(c.script), header("03000000") + c.records);
    EXPECT_EQ(ts.ui.boxTexts(), c.boxes);
  }
}

TEST_F(UltExport, ProgramInfoGoesAheadOfTheRecords) {
  form.programInfo() = u"Show \u00e9";
  const std::string file = exportUlt(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n");
  EXPECT_EQ(file.substr(232, 6), "Show \xe9");
  EXPECT_EQ(file.substr(238, 3), hex("f1 0900"));
  // The form keeps the text as typed for the next export.
  EXPECT_EQ(form.programInfo(), u"Show \u00e9");
}

TEST_F(UltExport, WrongExtensionWritesNothing) {
  ts.open(u"CAP[0NC 00:00:10:00>00:00:12:00]\nHi!\n");
  const std::string path = dir + "/out.ULT";
  ts.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnu_cc_ult(ts.st, form));
  EXPECT_FALSE(formCCultProximo(ts.st, form));
  EXPECT_EQ(ts.ui.lastBox().text, u"Error: Wrong closed caption file extension");
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_FALSE(form.visible);
}

TEST_F(UltExport, CancelWhileWritingLeavesAnEmptyFile) {
  // Enough captions for the write to take several steps.
  u16 script;
  for (int i = 0; i < 200; ++i)  // a subtitle tag's fields in a caption's order
    script += u"CAP" + subtitleTag(0, u'N', u'C', 10 + 3 * i, 12 + 3 * i, 30).substr(3) + u"Some caption text here\r\r";
  ts.open(script);
  const std::string path = dir + "/cancelled.ult";
  ts.ui.savePaths.push_back(path);
  ASSERT_TRUE(mnu_cc_ult(ts.st, form));
  ts.ui.onPump = [&] {
    if (form.commandCaption == u"Cancel" && form.progressValue >= 2048) formCCultProximo(ts.st, form);
  };
  EXPECT_FALSE(formCCultProximo(ts.st, form));
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_EQ(testing::readFile(path), "");
  EXPECT_EQ(form.commandCaption, u"OK");
}

}  // namespace
}  // namespace quillon
