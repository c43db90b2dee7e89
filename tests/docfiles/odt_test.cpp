#include <gtest/gtest.h>

#include "docfiles_support.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

using docfiles::buildOdt;
using docfiles::loadOdt;

std::unique_ptr<MemoryDocument> load(const std::string& bytes) {
  std::string problem;
  auto doc = loadOdt(bytes, problem);
  EXPECT_TRUE(doc) << problem;
  return doc ? std::move(doc) : std::make_unique<MemoryDocument>();
}

std::string build(const MemoryDocument& doc) {
  std::string bytes, problem;
  EXPECT_TRUE(buildOdt(doc, bytes, problem)) << problem;
  return bytes;
}

const std::string kCommon =
    "<style:default-style style:family=\"paragraph\"><style:text-properties fo:font-size=\"12pt\"/>"
    "</style:default-style>"
    "<style:style style:name=\"Voice\" style:family=\"paragraph\"><style:text-properties fo:font-style=\"italic\"/>"
    "</style:style>"
    "<style:style style:name=\"Quiet\" style:family=\"paragraph\" style:parent-style-name=\"Voice\"/>"
    "<style:style style:name=\"Emph\" style:family=\"text\"><style:text-properties fo:font-style=\"oblique\"/>"
    "</style:style>";
const std::string kAutomatic =
    "<style:style style:name=\"T1\" style:family=\"text\"><style:text-properties fo:font-weight=\"bold\"/>"
    "</style:style>"
    "<style:style style:name=\"T2\" style:family=\"text\"><style:text-properties fo:font-style=\"normal\"/>"
    "</style:style>";

TEST(Odt, ItalicComesFromSpanStylesThenParagraphStylesThroughTheirParents) {
  auto doc = load(odtPackage(
      "<text:p>Plain <text:span text:style-name=\"Emph\">slanted <text:span text:style-name=\"T1\">bold</text:span>"
      "</text:span>.</text:p>"
      "<text:h text:style-name=\"Quiet\" text:outline-level=\"1\">Heading <text:span text:style-name=\"T2\">up"
      "</text:span></text:h>"
      "<text:list><text:list-item><text:p text:style-name=\"Voice\"><text:a xlink:href=\"x\">linked</text:a>"
      "</text:p></text:list-item></text:list>",
      kAutomatic, kCommon));
  EXPECT_EQ(marked(*doc), u"Plain <i>slanted bold</i>.\n<i>Heading </i>up\n<i>linked</i>\n");
}

TEST(Odt, WhiteSpaceCollapsesAsInAnyOdfReaderAndBreaksBecomeScannerText) {
  auto doc = load(odtPackage(
      "<text:p>   lead <text:span>  x </text:span>  trail  </text:p>"
      "<text:p> <text:s/>y<text:s text:c=\"3\"/>z</text:p>"
      "<text:p>A<text:tab/>B<text:line-break/>C<text:soft-page-break/>"
      "<text:note><text:note-citation>1</text:note-citation><text:note-body><text:p>foot</text:p></text:note-body>"
      "</text:note></text:p>"
      "<table:table><table:table-column/><table:table-row><table:table-cell><text:p>cell</text:p></table:table-cell>"
      "</table:table-row></table:table>"));
  EXPECT_EQ(doc->text(), u"lead x trail \r y   z\rA\tB\vC\rcell\r");
}

TEST(Odt, SpacesAreWrittenSoTheyReadBackExactly) {
  MemoryDocument d;
  d.setText(u"  two leading\rdouble  inside and trailing  \r\tafter tab\r \r");
  d.setItalic({2, 5}, true);
  std::string bytes = build(d);
  EXPECT_EQ(marked(*load(bytes)), marked(d));
  std::string xml = partOf(bytes, "content.xml");
  EXPECT_NE(xml.find("<text:p><text:s text:c=\"2\"/><text:span text:style-name=\"QuillonItalic\">two</text:span> "
                     "leading</text:p><text:p>double <text:s/>inside and trailing <text:s/></text:p>"
                     "<text:p><text:tab/>after tab</text:p><text:p><text:s/></text:p>"),
            std::string::npos)
      << xml;
}

TEST(Odt, TagInsertedInFrontKeepsTheOtherParagraphsAndTakesTheNeighboursStyle) {
  auto doc = load(odtPackage("<text:p text:style-name=\"Voice\">First <text:span text:style-name=\"T1\">bold</text:span>"
                             "</text:p><text:p text:style-name=\"Voice\"><text:span text:style-name=\"T1\">Second"
                             "</text:span></text:p>",
                             kAutomatic, kCommon));
  TestStation t;
  MemoryDocument& d = t.docs.addDocument(std::move(doc));
  d.setSelection(d.paragraph(2));
  insertSubtitleTag(t.st, u"SUB[0 N 00:00:01:00>00:00:02:00]\r");
  d.insert(d.paragraph(3).end - 1, u" end", true, true);
  std::string saved = build(d);
  std::string xml = partOf(saved, "content.xml");
  // The tag paragraph is upright against the italic Voice style, inside the
  // neighbour's bold span; the first paragraph is as it was.
  EXPECT_NE(xml.find("<text:p text:style-name=\"Voice\">First <text:span text:style-name=\"T1\">bold</text:span>"
                     "</text:p><text:p text:style-name=\"Voice\"><text:span text:style-name=\"T1\"><text:span "
                     "text:style-name=\"QuillonUpright\">SUB[0 N 00:00:01:00&gt;00:00:02:00]</text:span></text:span>"
                     "</text:p><text:p text:style-name=\"Voice\"><text:span text:style-name=\"T1\">Second</text:span>"
                     "<text:span text:style-name=\"T1\"> end</text:span></text:p>"),
            std::string::npos)
      << xml;
  EXPECT_NE(xml.find("<style:style style:name=\"QuillonUpright\" style:family=\"text\"><style:text-properties "
                     "fo:font-style=\"normal\""),
            std::string::npos);
  EXPECT_EQ(marked(*load(saved)), u"<i>First bold</i>\nSUB[0 N 00:00:01:00>00:00:02:00]\n<i>Second end</i>\n");
}

TEST(Odt, PrependingToAParagraphOpeningWithDroppedSpaceRewritesIt) {
  auto doc = load(odtPackage("<text:p>  word</text:p>"));
  doc->insert(0, u"X", true, false);
  std::string saved = build(*doc);
  EXPECT_EQ(load(saved)->text(), u"Xword\r");
}

TEST(Odt, MetadataGivesBuiltinsCompanyAndUserDefinedPropertiesAndSurvivesASave) {
  setenv("TZ", "UTC", 1);
  tzset();
  auto doc = load(odtPackage(
      "<text:p>x</text:p>", "", "",
      "<dc:title>Pilot</dc:title><meta:initial-creator>Ana</meta:initial-creator><dc:creator>Bea</dc:creator>"
      "<dc:description>Notes</dc:description><meta:editing-cycles>7</meta:editing-cycles>"
      "<meta:creation-date>2023-04-05T06:07:08.123</meta:creation-date><dc:date>2023-05-06T07:08:09Z</dc:date>"
      "<meta:user-defined meta:name=\"Company\">ACME</meta:user-defined>"
      "<meta:user-defined meta:name=\"Reels\" meta:value-type=\"float\">6</meta:user-defined>"));
  MemoryDocumentService svc;
  svc.addDocument(std::move(doc));
  EXPECT_EQ(svc.builtinProperty(wdPropertyTitle), u"Pilot");
  EXPECT_EQ(svc.builtinProperty(wdPropertyAuthor), u"Ana");
  EXPECT_EQ(svc.builtinProperty(wdPropertyComments), u"Notes");
  EXPECT_EQ(svc.builtinProperty(wdPropertyRevision), u"7");
  EXPECT_EQ(svc.builtinProperty(wdPropertyTimeCreated), u"2023-04-05 06:07:08");
  EXPECT_EQ(svc.builtinProperty(wdPropertyTimeLastSaved), u"2023-05-06 07:08:09");
  EXPECT_EQ(svc.builtinProperty(wdPropertyCompany), u"ACME");
  EXPECT_FALSE(svc.customProperty(u"Company"));
  svc.setCustomProperty(u"RN", u"03");
  std::string saved = build(*svc.active());
  std::string meta = partOf(saved, "meta.xml");
  EXPECT_NE(meta.find("<meta:user-defined meta:name=\"Company\">ACME</meta:user-defined><meta:user-defined "
                      "meta:name=\"Reels\" meta:value-type=\"float\">6</meta:user-defined><meta:user-defined "
                      "meta:name=\"RN\" meta:value-type=\"string\">03</meta:user-defined>"),
            std::string::npos)
      << meta;
  EXPECT_NE(meta.find("<meta:creation-date>2023-04-05T06:07:08</meta:creation-date>"), std::string::npos) << meta;
  auto back = load(saved);
  EXPECT_EQ(back->customProperties, (std::vector<std::pair<u16, u16>>{{u"Reels", u"6"}, {u"RN", u"03"}}));
}

TEST(Odt, ANewDocumentIsAValidPackageWithItsTypeFirstAndStored) {
  MemoryDocument d;
  d.setText(u"One\rTwo\r");
  d.customProperties.emplace_back(u"OPT", u"Title");
  std::string bytes = build(d);
  docfiles::ZipPackage pkg;
  std::string problem;
  ASSERT_TRUE(pkg.read(bytes, problem)) << problem;
  ASSERT_FALSE(pkg.entries.empty());
  EXPECT_EQ(pkg.entries[0].name, "mimetype");
  EXPECT_EQ(pkg.entries[0].data, "application/vnd.oasis.opendocument.text");
  // Stored: the type sits readable at offset 38 of the archive.
  EXPECT_EQ(bytes.substr(38, 39), "application/vnd.oasis.opendocument.text");
  auto back = load(bytes);
  EXPECT_EQ(back->text(), u"One\rTwo\r");
  EXPECT_EQ(back->customProperties.size(), 1u);
}

}  // namespace
}  // namespace quillon::testing
