// .docx and .odt read into the station's document and written back. The
// packages' XML lies in golden/: in_*.xml are the bodies read, the styles
// files their styles, the rest the parts written.
#include <gtest/gtest.h>

#include <functional>

#include "docfiles_support.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

const std::u16string kTag = u"SUB[0 N 00:00:01:00>00:00:02:00]\r";

// A package whose body is the golden file `body`, with the styles files
// when `styled`.
std::string package(bool odt, const std::string& body, bool styled = true) {
  const std::string text = body.rfind("in_", 0) == 0 ? goldenFile(body) : body;
  if (odt) return odtPackage(text, styled ? goldenFile("odt_automatic.xml") : "", styled ? goldenFile("odt_common.xml") : "");
  return docxPackage(text, styled ? goldenFile("docx_styles.xml") : "");
}

TEST(OfficeFiles, ItalicsComeFromRunsStylesAndParentsAndBreaksBecomeScannerText) {
  const struct {
    bool odt;
    const char* body;
    std::u16string expected;
  } cases[] = {
      // Direct formatting, then character styles, then paragraph styles through their parents.
      {false, "in_docx_italics.xml", u"Plain <i>direct</i> off\n<i>based on</i> upright\n<i>linked</i>\n"},
      {true, "in_odt_italics.xml", u"Plain <i>slanted bold</i>.\n<i>Heading </i>up\n<i>linked</i>\n"},
      // Tabs, line and page breaks, table cells, tracked changes, notes; ODF white space collapses.
      {false, "in_docx_breaks.xml", u"A\tB\vC\f\ncell one\ncell two\nkept added\n"},
      {true, "in_odt_spaces.xml", u"lead x trail \n y   z\nA\tB\vC\ncell\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(marked(*loadPackage(package(c.odt, c.body), c.odt)), c.expected) << c.body;
}

// Untouched paragraphs are written back byte for byte, a new one takes the
// formatting of the one it stands in front of, an edited one keeps its
// paragraph and first run's formatting; italics are written against the
// paragraph's style. The part written is compared whole.
TEST(OfficeFiles, EditsRewriteOnlyTheParagraphsTheyTouch) {
  using Edit = std::function<void(TestStation&, MemoryDocument&)>;
  const auto tagBefore = [](long n) {
    return [n](TestStation& t, MemoryDocument& d) {
      d.setSelection(d.paragraph(n));
      insertSubtitleTag(t.st, kTag);
    };
  };
  struct Case {
    const char* golden;  // names the part too: word/styles.xml, word/document.xml or content.xml
    bool odt;
    std::string package;  // empty for a new document
    Edit edit;
    std::u16string readBack;
  } cases[] = {
      {"docx_tag_in_front.xml", false, package(false, "in_docx_tag.xml"), tagBefore(2),
       u"<i>Hello there</i>\nSUB[0 N 00:00:01:00>00:00:02:00]\nSecond\n"},
      {"docx_ends_joined.xml", false, package(false, "in_docx_ends.xml"),
       [](TestStation&, MemoryDocument& d) {
         d.insert(0, u"up ", true, false);
         d.insert(d.length() - 1, u" slanted", true, true);
       },
       u"up <i>middle slanted</i>\n"},
      {"docx_edit_inside.xml", false,
       package(false, "<w:p><w:pPr><w:jc w:val=\"right\"/></w:pPr><w:r><w:rPr><w:sz w:val=\"40\"/></w:rPr>"
                      "<w:t>one two</w:t></w:r></w:p>", false),
       [](TestStation&, MemoryDocument& d) {
         d.erase({3, 4});
         d.insert(3, u"\t", true, false);
         d.setItalic({4, 7}, true);
       },
       u"one\t<i>two</i>\n"},
      {"docx_table_cell.xml", false, package(false, "in_docx_table.xml", false),
       [](TestStation&, MemoryDocument& d) { d.erase(d.paragraph(2)); }, u"before\n\nafter\n"},
      {"docx_new_styles.xml", false, "",
       [](TestStation&, MemoryDocument& d) {
         d.setText(kTag + u"  two  spaces\tand tab\r\rlast\r");
         d.setItalic({33, 38}, true);
         d.fontName = u"Courier New";
       },
       u"SUB[0 N 00:00:01:00>00:00:02:00]\n<i>  two</i>  spaces\tand tab\n\nlast\n"},
      {"odt_new_spaces.xml", true, "",
       [](TestStation&, MemoryDocument& d) {
         d.setText(u"  two leading\rdouble  inside and trailing  \r\tafter tab\r \r");
         d.setItalic({2, 5}, true);
       },
       u"  <i>two</i> leading\ndouble  inside and trailing  \n\tafter tab\n \n"},
      {"odt_tag_in_front.xml", true, package(true, "in_odt_tag.xml"),
       [&](TestStation& t, MemoryDocument& d) {
         tagBefore(2)(t, d);
         d.insert(d.paragraph(3).end - 1, u" end", true, true);
       },
       u"<i>First bold</i>\nSUB[0 N 00:00:01:00>00:00:02:00]\n<i>Second end</i>\n"},
      {"odt_dropped_space.xml", true, package(true, "<text:p>  word</text:p>", false),
       [](TestStation&, MemoryDocument& d) { d.insert(0, u"X", true, false); }, u"Xword\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.golden);
    TestStation t;
    MemoryDocument& d =
        t.docs.addDocument(c.package.empty() ? std::make_unique<MemoryDocument>() : loadPackage(c.package, c.odt));
    c.edit(t, d);
    const std::string saved = buildPackage(d, c.odt), name = c.golden;
    const std::string part = c.odt                                        ? "content.xml"
                             : name.find("styles") != std::string::npos ? "word/styles.xml"
                                                                          : "word/document.xml";
    EXPECT_TRUE(matchesGolden(c.golden, partOf(saved, part)));
    EXPECT_EQ(marked(*loadPackage(saved, c.odt)), c.readBack);
  }
}

TEST(OfficeFiles, PropertiesAreReadAndSurviveASaveWithTheOnesAdded) {
  setenv("TZ", "UTC", 1);
  tzset();
  const struct {
    bool odt;
    std::string package;
    std::vector<std::pair<std::string, std::string>> written;  // part, text it holds
  } cases[] = {
      {false,
       docxPackage("<w:p><w:r><w:t>x</w:t></w:r></w:p>", "",
                   {{"docProps/core.xml", goldenFile("in_docx_core.xml")},
                    {"docProps/app.xml", "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/"
                                         "extended-properties\"><Company>ACME</Company></Properties>"},
                    {"docProps/custom.xml", goldenFile("in_docx_custom.xml")}}),
       {{"docProps/custom.xml", "name=\"Reels\"><vt:i4>6</vt:i4>"},
        {"docProps/custom.xml", "pid=\"3\" name=\"TN\"><vt:lpwstr>Translator &lt;&amp;&gt; Name</vt:lpwstr>"},
        {"[Content_Types].xml", "/docProps/custom.xml"},
        {"_rels/.rels", "Target=\"docProps/custom.xml\""}}},
      {true, odtPackage("<text:p>x</text:p>", "", "", goldenFile("in_odt_meta.xml")),
       {{"meta.xml", "<meta:user-defined meta:name=\"Company\">ACME</meta:user-defined><meta:user-defined "
                     "meta:name=\"Reels\" meta:value-type=\"float\">6</meta:user-defined><meta:user-defined "
                     "meta:name=\"TN\" meta:value-type=\"string\">Translator &lt;&amp;&gt; Name</meta:user-defined>"},
        {"meta.xml", "<meta:creation-date>2023-04-05T06:07:08</meta:creation-date>"}}},
  };
  const std::pair<int, std::u16string> builtins[] = {
      {wdPropertyTitle, u"Pilot"},    {wdPropertyAuthor, u"Ana"},
      {wdPropertyComments, u"Notes"}, {wdPropertyRevision, u"7"},
      {wdPropertyCompany, u"ACME"},   {wdPropertyTimeCreated, u"2023-04-05 06:07:08"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.odt ? "odt" : "docx");
    MemoryDocumentService svc;
    svc.addDocument(loadPackage(c.package, c.odt));
    for (const auto& [i, v] : builtins) EXPECT_EQ(svc.builtinProperty(i), v) << i;
    EXPECT_EQ(svc.builtinProperty(wdPropertyTimeLastSaved), u"2023-05-06 07:08:09");
    svc.setCustomProperty(u"TN", u"Translator <&> Name");

    const std::string saved = buildPackage(*svc.active(), c.odt);
    for (const auto& [part, text] : c.written) EXPECT_NE(partOf(saved, part).find(text), std::string::npos) << part;
    MemoryDocumentService back;
    back.addDocument(loadPackage(saved, c.odt));
    EXPECT_EQ(back.active()->customProperties,
              (std::vector<std::pair<u16, u16>>{{u"Reels", u"6"}, {u"TN", u"Translator <&> Name"}}));
    for (const auto& [i, v] : builtins) EXPECT_EQ(back.builtinProperty(i), v) << i;
    // Saving is a new last save.
    EXPECT_NE(back.builtinProperty(wdPropertyTimeLastSaved), u"2023-05-06 07:08:09");
  }
}

TEST(OfficeFiles, ANewOdtHasItsTypeFirstAndStoredAndADocxSavesAsOdt) {
  MemoryDocument d;
  d.setText(u"One\rTwo\r");
  const std::string bytes = buildPackage(d, true);
  // Stored first: the type sits readable at offset 38 of the archive.
  EXPECT_EQ(bytes.substr(30, 8), "mimetype");
  EXPECT_EQ(bytes.substr(38, 39), "application/vnd.oasis.opendocument.text");
  EXPECT_EQ(loadPackage(bytes, true)->text(), u"One\rTwo\r");

  auto doc = loadPackage(docxPackage("<w:p><w:r><w:t xml:space=\"preserve\">Hello </w:t></w:r><w:r><w:rPr><w:i/>"
                                     "</w:rPr><w:t>world</w:t></w:r></w:p>"),
                         false);
  doc->customProperties.emplace_back(u"TN", u"Name");
  auto back = loadPackage(buildPackage(*doc, true), true);
  EXPECT_EQ(marked(*back), u"Hello <i>world</i>\n");
  EXPECT_EQ(back->customProperties, doc->customProperties);
}

}  // namespace
}  // namespace quillon::testing
