#include <gtest/gtest.h>

#include "docfiles_support.h"
#include "script/document_files.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

using docfiles::buildDocx;
using docfiles::loadDocx;

std::unique_ptr<MemoryDocument> load(const std::string& bytes) {
  std::string problem;
  auto doc = loadDocx(bytes, problem);
  EXPECT_TRUE(doc) << problem;
  return doc ? std::move(doc) : std::make_unique<MemoryDocument>();
}

std::string build(const MemoryDocument& doc) {
  std::string bytes, problem;
  EXPECT_TRUE(buildDocx(doc, bytes, problem)) << problem;
  return bytes;
}

const std::string kItalicStyles =
    "<w:docDefaults><w:rPrDefault><w:rPr><w:sz w:val=\"24\"/></w:rPr></w:rPrDefault></w:docDefaults>"
    "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"/>"
    "<w:style w:type=\"paragraph\" w:styleId=\"Voice\"><w:basedOn w:val=\"Normal\"/><w:rPr><w:i/></w:rPr></w:style>"
    "<w:style w:type=\"paragraph\" w:styleId=\"VoiceQuiet\"><w:basedOn w:val=\"Voice\"/></w:style>"
    "<w:style w:type=\"character\" w:styleId=\"Emph\"><w:rPr><w:i/></w:rPr></w:style>"
    "<w:style w:type=\"character\" w:styleId=\"Plain\"><w:rPr><w:i w:val=\"0\"/></w:rPr></w:style>";

TEST(Docx, ItalicComesFromDirectFormattingThenCharacterThenParagraphStyles) {
  auto doc = load(docxPackage(
      "<w:p><w:r><w:t xml:space=\"preserve\">Plain </w:t></w:r><w:r><w:rPr><w:i/></w:rPr><w:t>direct</w:t></w:r>"
      "<w:r><w:rPr><w:i w:val=\"false\"/></w:rPr><w:t> off</w:t></w:r></w:p>"
      "<w:p><w:pPr><w:pStyle w:val=\"VoiceQuiet\"/></w:pPr><w:r><w:t>based on</w:t></w:r>"
      "<w:r><w:rPr><w:rStyle w:val=\"Plain\"/></w:rPr><w:t> upright</w:t></w:r></w:p>"
      "<w:p><w:hyperlink><w:r><w:rPr><w:rStyle w:val=\"Emph\"/></w:rPr><w:t>linked</w:t></w:r></w:hyperlink></w:p>",
      kItalicStyles));
  EXPECT_EQ(marked(*doc), u"Plain <i>direct</i> off\n<i>based on</i> upright\n<i>linked</i>\n");
}

TEST(Docx, BreaksTabsAndTablesBecomeTheTextTheScannersRead) {
  auto doc = load(docxPackage(
      "<w:p><w:r><w:t>A</w:t><w:tab/><w:t>B</w:t><w:br/><w:t>C</w:t><w:br w:type=\"page\"/></w:r></w:p>"
      "<w:tbl><w:tr><w:tc><w:p><w:r><w:t>cell one</w:t></w:r></w:p></w:tc>"
      "<w:tc><w:p><w:r><w:t>cell two</w:t></w:r></w:p></w:tc></w:tr></w:tbl>"
      "<w:p><w:r><w:t>kept</w:t></w:r><w:del><w:r><w:delText>gone</w:delText></w:r></w:del>"
      "<w:ins><w:r><w:t> added</w:t></w:r></w:ins></w:p>"));
  EXPECT_EQ(doc->text(), u"A\tB\vC\f\rcell one\rcell two\rkept added\r");
}

TEST(Docx, TagInsertedInFrontKeepsEveryOtherParagraphsXmlAndTakesItsNeighboursFormatting) {
  const std::string body =
      "<w:p><w:pPr><w:pStyle w:val=\"Voice\"/><w:jc w:val=\"center\"/></w:pPr>"
      "<w:r><w:rPr><w:rFonts w:ascii=\"Arial\"/><w:b/></w:rPr><w:t>Hello there</w:t></w:r></w:p>"
      "<w:p><w:r><w:rPr><w:color w:val=\"FF0000\"/></w:rPr><w:t>Second</w:t></w:r></w:p>";
  auto doc = load(docxPackage(body, kItalicStyles));
  TestStation t;
  MemoryDocument& d = t.docs.addDocument(std::move(doc));
  d.setSelection(d.paragraph(2));
  insertSubtitleTag(t.st, u"SUB[0 N 00:00:01:00>00:00:02:00]\r");
  std::string saved = build(d);
  std::string xml = partOf(saved, "word/document.xml");
  // The untouched first paragraph is byte for byte what it was; the tag is a
  // new paragraph formatted like the one it stands in front of, upright
  // against nothing (Normal is not italic).
  EXPECT_NE(xml.find("<w:p><w:pPr><w:pStyle w:val=\"Voice\"/><w:jc w:val=\"center\"/></w:pPr><w:r><w:rPr><w:rFonts "
                     "w:ascii=\"Arial\"/><w:b/></w:rPr><w:t>Hello there</w:t></w:r></w:p>"
                     "<w:p><w:r><w:rPr><w:color w:val=\"FF0000\"/></w:rPr><w:t>SUB[0 N "
                     "00:00:01:00&gt;00:00:02:00]</w:t></w:r></w:p>"
                     "<w:p><w:r><w:rPr><w:color w:val=\"FF0000\"/></w:rPr><w:t>Second</w:t></w:r></w:p>"),
            std::string::npos)
      << xml;
  EXPECT_EQ(marked(*load(saved)), u"<i>Hello there</i>\nSUB[0 N 00:00:01:00>00:00:02:00]\nSecond\n");
}

TEST(Docx, TextAddedAtTheEndsOfAParagraphJoinsItsRunsAndItalicIsWrittenAgainstTheStyle) {
  auto doc = load(docxPackage(
      "<w:p><w:pPr><w:pStyle w:val=\"Voice\"/></w:pPr><w:r><w:rPr><w:b/></w:rPr><w:t>middle</w:t></w:r>"
      "<w:bookmarkStart w:id=\"0\" w:name=\"mark\"/><w:bookmarkEnd w:id=\"0\"/></w:p>",
      kItalicStyles));
  doc->insert(0, u"up ", true, false);
  doc->insert(doc->length() - 1, u" slanted", true, true);
  std::string xml = partOf(build(*doc), "word/document.xml");
  EXPECT_NE(xml.find("<w:p><w:pPr><w:pStyle w:val=\"Voice\"/></w:pPr>"
                     "<w:r><w:rPr><w:b/><w:i w:val=\"0\"/><w:iCs w:val=\"0\"/></w:rPr><w:t xml:space=\"preserve\">up "
                     "</w:t></w:r><w:r><w:rPr><w:b/></w:rPr><w:t>middle</w:t></w:r>"
                     "<w:bookmarkStart w:id=\"0\" w:name=\"mark\"/><w:bookmarkEnd w:id=\"0\"/>"
                     "<w:r><w:rPr><w:b/></w:rPr><w:t xml:space=\"preserve\"> slanted</w:t></w:r></w:p>"),
            std::string::npos)
      << xml;
}

TEST(Docx, AnEditInsideAParagraphRewritesItsRunsWithTheFirstRunsFormatting) {
  auto doc = load(docxPackage("<w:p><w:pPr><w:jc w:val=\"right\"/></w:pPr><w:r><w:rPr><w:sz w:val=\"40\"/></w:rPr>"
                              "<w:t>one two</w:t></w:r></w:p>"));
  doc->erase({3, 4});
  doc->insert(3, u"\t", true, false);
  doc->setItalic({4, 7}, true);
  std::string xml = partOf(build(*doc), "word/document.xml");
  EXPECT_NE(xml.find("<w:p><w:pPr><w:jc w:val=\"right\"/></w:pPr><w:r><w:rPr><w:sz w:val=\"40\"/></w:rPr>"
                     "<w:t>one</w:t><w:tab/></w:r><w:r><w:rPr><w:i/><w:iCs/><w:sz w:val=\"40\"/></w:rPr>"
                     "<w:t>two</w:t></w:r></w:p>"),
            std::string::npos)
      << xml;
}

TEST(Docx, DeletedParagraphsGoAndATableCellKeepsAParagraph) {
  auto doc = load(docxPackage(
      "<w:p><w:r><w:t>before</w:t></w:r></w:p><w:tbl><w:tr><w:tc><w:p><w:r><w:t>cell</w:t></w:r></w:p></w:tc></w:tr>"
      "</w:tbl><w:p><w:r><w:t>after</w:t></w:r></w:p>"));
  doc->erase(doc->paragraph(2));
  std::vector<docfiles::ParagraphText> written;
  std::string bytes, problem;
  ASSERT_TRUE(buildDocx(*doc, bytes, problem, &written)) << problem;
  EXPECT_EQ(load(bytes)->text(), u"before\r\rafter\r");
  EXPECT_EQ(written.size(), 3u);
}

TEST(Docx, ANewDocumentSavesWithTheStationsFontAndReadsBack) {
  MemoryDocument d;
  d.setText(u"SUB[0 N 00:00:01:00>00:00:02:00]\r  two  spaces\tand tab\r\rlast\r");
  d.setItalic({33, 38}, true);
  d.fontName = u"Courier New";
  std::string bytes = build(d);
  EXPECT_EQ(marked(*load(bytes)), marked(d));
  EXPECT_NE(partOf(bytes, "word/styles.xml").find("w:ascii=\"Courier New\""), std::string::npos);
}

TEST(Docx, PropertiesComeFromCoreAppAndCustomPartsAndSurviveASave) {
  std::map<std::string, std::string> extra = {
      {"docProps/core.xml",
       "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
       "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
       "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"><dc:title>Pilot</dc:title><dc:creator>Ana</dc:creator>"
       "<dc:description>Notes</dc:description><cp:revision>4</cp:revision>"
       "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2023-04-05T06:07:08Z</dcterms:created>"
       "<dcterms:modified xsi:type=\"dcterms:W3CDTF\">2023-05-06T07:08:09Z</dcterms:modified></cp:coreProperties>"},
      {"docProps/app.xml",
       "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\">"
       "<Company>ACME Dubbing</Company></Properties>"},
      {"docProps/custom.xml",
       "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/custom-properties\" "
       "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">"
       "<property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"2\" name=\"Episodes\"><vt:i4>12</vt:i4>"
       "</property><property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"3\" name=\"OPT\">"
       "<vt:lpwstr>Original</vt:lpwstr></property></Properties>"}};
  // Read without the relationships too: the usual part names are enough.
  setenv("TZ", "UTC", 1);
  tzset();
  auto doc = load(docxPackage("<w:p><w:r><w:t>x</w:t></w:r></w:p>", "", extra));
  MemoryDocumentService svc;
  svc.addDocument(std::move(doc));
  EXPECT_EQ(svc.builtinProperty(wdPropertyTitle), u"Pilot");
  EXPECT_EQ(svc.builtinProperty(wdPropertyAuthor), u"Ana");
  EXPECT_EQ(svc.builtinProperty(wdPropertyComments), u"Notes");
  EXPECT_EQ(svc.builtinProperty(wdPropertyRevision), u"4");
  EXPECT_EQ(svc.builtinProperty(wdPropertyTimeCreated), u"2023-04-05 06:07:08");
  EXPECT_EQ(svc.builtinProperty(wdPropertyTimeLastSaved), u"2023-05-06 07:08:09");
  EXPECT_EQ(svc.builtinProperty(wdPropertyCompany), u"ACME Dubbing");
  EXPECT_EQ(svc.customProperty(u"Episodes"), u"12");
  svc.setCustomProperty(u"TN", u"Translator <&> Name");

  std::string saved = build(*svc.active());
  std::string custom = partOf(saved, "docProps/custom.xml");
  EXPECT_NE(custom.find("name=\"Episodes\"><vt:i4>12</vt:i4>"), std::string::npos) << custom;
  EXPECT_NE(custom.find("pid=\"4\" name=\"TN\"><vt:lpwstr>Translator &lt;&amp;&gt; Name</vt:lpwstr>"),
            std::string::npos)
      << custom;
  EXPECT_NE(partOf(saved, "[Content_Types].xml").find("/docProps/custom.xml"), std::string::npos);
  EXPECT_NE(partOf(saved, "_rels/.rels").find("Target=\"docProps/custom.xml\""), std::string::npos);
  auto back = load(saved);
  EXPECT_EQ(back->customProperties, (std::vector<std::pair<u16, u16>>{
                                        {u"Episodes", u"12"}, {u"OPT", u"Original"}, {u"TN", u"Translator <&> Name"}}));
  for (int i : {1, 3, 5, 8, 11, 21}) {
    MemoryDocumentService b;
    b.addDocument(std::make_unique<MemoryDocument>(*back));
    EXPECT_EQ(b.builtinProperty(i), svc.builtinProperty(i)) << i;
  }
  // Saving is a new last save.
  MemoryDocumentService b;
  b.addDocument(std::move(back));
  EXPECT_NE(b.builtinProperty(wdPropertyTimeLastSaved), u"2023-05-06 07:08:09");
}

}  // namespace
}  // namespace quillon::testing
