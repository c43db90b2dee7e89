// .docx and .odt read into the station's document and written back.
#include <gtest/gtest.h>

#include <functional>

#include "docfiles_support.h"
#include "script/tag_grammar.h"
#include "support/station_fixture.h"

namespace quillon::testing {
namespace {

const std::string kDocxStyles =
    "<w:docDefaults><w:rPrDefault><w:rPr><w:sz w:val=\"24\"/></w:rPr></w:rPrDefault></w:docDefaults>"
    "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"/>"
    "<w:style w:type=\"paragraph\" w:styleId=\"Voice\"><w:basedOn w:val=\"Normal\"/><w:rPr><w:i/></w:rPr></w:style>"
    "<w:style w:type=\"paragraph\" w:styleId=\"VoiceQuiet\"><w:basedOn w:val=\"Voice\"/></w:style>"
    "<w:style w:type=\"character\" w:styleId=\"Emph\"><w:rPr><w:i/></w:rPr></w:style>"
    "<w:style w:type=\"character\" w:styleId=\"Plain\"><w:rPr><w:i w:val=\"0\"/></w:rPr></w:style>";
const std::string kOdtCommon =
    "<style:default-style style:family=\"paragraph\"><style:text-properties fo:font-size=\"12pt\"/>"
    "</style:default-style><style:style style:name=\"Voice\" style:family=\"paragraph\"><style:text-properties "
    "fo:font-style=\"italic\"/></style:style><style:style style:name=\"Quiet\" style:family=\"paragraph\" "
    "style:parent-style-name=\"Voice\"/><style:style style:name=\"Emph\" style:family=\"text\"><style:text-properties "
    "fo:font-style=\"oblique\"/></style:style>";
const std::string kOdtAutomatic =
    "<style:style style:name=\"T1\" style:family=\"text\"><style:text-properties fo:font-weight=\"bold\"/>"
    "</style:style><style:style style:name=\"T2\" style:family=\"text\"><style:text-properties "
    "fo:font-style=\"normal\"/></style:style>";
const std::u16string kTag = u"SUB[0 N 00:00:01:00>00:00:02:00]\r";

TEST(OfficeFiles, ItalicsComeFromRunsStylesAndParentsAndBreaksBecomeScannerText) {
  struct Case {
    const char* what;
    bool odt;
    std::string package;
    std::u16string expected;
  } cases[] = {
      {"docx: direct, then character, then paragraph style", false,
       docxPackage("<w:p><w:r><w:t xml:space=\"preserve\">Plain </w:t></w:r><w:r><w:rPr><w:i/></w:rPr><w:t>direct"
                   "</w:t></w:r><w:r><w:rPr><w:i w:val=\"false\"/></w:rPr><w:t> off</w:t></w:r></w:p>"
                   "<w:p><w:pPr><w:pStyle w:val=\"VoiceQuiet\"/></w:pPr><w:r><w:t>based on</w:t></w:r>"
                   "<w:r><w:rPr><w:rStyle w:val=\"Plain\"/></w:rPr><w:t> upright</w:t></w:r></w:p><w:p><w:hyperlink>"
                   "<w:r><w:rPr><w:rStyle w:val=\"Emph\"/></w:rPr><w:t>linked</w:t></w:r></w:hyperlink></w:p>",
                   kDocxStyles),
       u"Plain <i>direct</i> off\n<i>based on</i> upright\n<i>linked</i>\n"},
      {"docx: tab, line and page breaks, table cells, tracked changes", false,
       docxPackage("<w:p><w:r><w:t>A</w:t><w:tab/><w:t>B</w:t><w:br/><w:t>C</w:t><w:br w:type=\"page\"/></w:r></w:p>"
                   "<w:tbl><w:tr><w:tc><w:p><w:r><w:t>cell one</w:t></w:r></w:p></w:tc>"
                   "<w:tc><w:p><w:r><w:t>cell two</w:t></w:r></w:p></w:tc></w:tr></w:tbl>"
                   "<w:p><w:r><w:t>kept</w:t></w:r><w:del><w:r><w:delText>gone</w:delText></w:r></w:del>"
                   "<w:ins><w:r><w:t> added</w:t></w:r></w:ins></w:p>"),
       u"A\tB\vC\f\ncell one\ncell two\nkept added\n"},
      {"odt: span styles, then paragraph styles through their parents", true,
       odtPackage("<text:p>Plain <text:span text:style-name=\"Emph\">slanted <text:span text:style-name=\"T1\">bold"
                  "</text:span></text:span>.</text:p><text:h text:style-name=\"Quiet\" text:outline-level=\"1\">"
                  "Heading <text:span text:style-name=\"T2\">up</text:span></text:h><text:list><text:list-item>"
                  "<text:p text:style-name=\"Voice\"><text:a xlink:href=\"x\">linked</text:a></text:p>"
                  "</text:list-item></text:list>",
                  kOdtAutomatic, kOdtCommon),
       u"Plain <i>slanted bold</i>.\n<i>Heading </i>up\n<i>linked</i>\n"},
      {"odt: white space collapses, breaks, notes and tables", true,
       odtPackage("<text:p>   lead <text:span>  x </text:span>  trail  </text:p>"
                  "<text:p> <text:s/>y<text:s text:c=\"3\"/>z</text:p>"
                  "<text:p>A<text:tab/>B<text:line-break/>C<text:soft-page-break/><text:note><text:note-citation>1"
                  "</text:note-citation><text:note-body><text:p>foot</text:p></text:note-body></text:note></text:p>"
                  "<table:table><table:table-column/><table:table-row><table:table-cell><text:p>cell</text:p>"
                  "</table:table-cell></table:table-row></table:table>"),
       u"lead x trail \n y   z\nA\tB\vC\ncell\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(marked(*loadPackage(c.package, c.odt)), c.expected) << c.what;
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
    const char* golden;  // also names the part: word/ or content.xml
    bool odt;
    std::string package;  // empty for a new document
    Edit edit;
    std::u16string readBack;
  } cases[] = {
      {"docx_tag_in_front.xml", false,
       docxPackage("<w:p><w:pPr><w:pStyle w:val=\"Voice\"/><w:jc w:val=\"center\"/></w:pPr><w:r><w:rPr><w:rFonts "
                   "w:ascii=\"Arial\"/><w:b/></w:rPr><w:t>Hello there</w:t></w:r></w:p><w:p><w:r><w:rPr><w:color "
                   "w:val=\"FF0000\"/></w:rPr><w:t>Second</w:t></w:r></w:p>",
                   kDocxStyles),
       tagBefore(2), u"<i>Hello there</i>\nSUB[0 N 00:00:01:00>00:00:02:00]\nSecond\n"},
      {"docx_ends_joined.xml", false,
       docxPackage("<w:p><w:pPr><w:pStyle w:val=\"Voice\"/></w:pPr><w:r><w:rPr><w:b/></w:rPr><w:t>middle</w:t></w:r>"
                   "<w:bookmarkStart w:id=\"0\" w:name=\"mark\"/><w:bookmarkEnd w:id=\"0\"/></w:p>",
                   kDocxStyles),
       [](TestStation&, MemoryDocument& d) {
         d.insert(0, u"up ", true, false);
         d.insert(d.length() - 1, u" slanted", true, true);
       },
       u"up <i>middle slanted</i>\n"},
      {"docx_edit_inside.xml", false,
       docxPackage("<w:p><w:pPr><w:jc w:val=\"right\"/></w:pPr><w:r><w:rPr><w:sz w:val=\"40\"/></w:rPr>"
                   "<w:t>one two</w:t></w:r></w:p>"),
       [](TestStation&, MemoryDocument& d) {
         d.erase({3, 4});
         d.insert(3, u"\t", true, false);
         d.setItalic({4, 7}, true);
       },
       u"one\t<i>two</i>\n"},
      {"docx_table_cell.xml", false,
       docxPackage("<w:p><w:r><w:t>before</w:t></w:r></w:p><w:tbl><w:tr><w:tc><w:p><w:r><w:t>cell</w:t></w:r></w:p>"
                   "</w:tc></w:tr></w:tbl><w:p><w:r><w:t>after</w:t></w:r></w:p>"),
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
      {"odt_tag_in_front.xml", true,
       odtPackage("<text:p text:style-name=\"Voice\">First <text:span text:style-name=\"T1\">bold</text:span>"
                  "</text:p><text:p text:style-name=\"Voice\"><text:span text:style-name=\"T1\">Second"
                  "</text:span></text:p>",
                  kOdtAutomatic, kOdtCommon),
       [&](TestStation& t, MemoryDocument& d) {
         tagBefore(2)(t, d);
         d.insert(d.paragraph(3).end - 1, u" end", true, true);
       },
       u"<i>First bold</i>\nSUB[0 N 00:00:01:00>00:00:02:00]\n<i>Second end</i>\n"},
      {"odt_dropped_space.xml", true, odtPackage("<text:p>  word</text:p>"),
       [](TestStation&, MemoryDocument& d) { d.insert(0, u"X", true, false); }, u"Xword\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.golden);
    TestStation t;
    MemoryDocument& d =
        t.docs.addDocument(c.package.empty() ? std::make_unique<MemoryDocument>() : loadPackage(c.package, c.odt));
    c.edit(t, d);
    const std::string saved = buildPackage(d, c.odt);
    const std::string name = c.golden;
    const std::string part = c.odt ? "content.xml" : name.find("styles") != std::string::npos ? "word/styles.xml"
                                                                                               : "word/document.xml";
    EXPECT_TRUE(matchesGolden(c.golden, partOf(saved, part)));
    EXPECT_EQ(marked(*loadPackage(saved, c.odt)), c.readBack);
  }
}

TEST(OfficeFiles, PropertiesAreReadAndSurviveASaveWithTheOnesAdded) {
  setenv("TZ", "UTC", 1);
  tzset();
  const std::string docxProperties =
      "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
      "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
      "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"><dc:title>Pilot</dc:title><dc:creator>Ana</dc:creator>"
      "<dc:description>Notes</dc:description><cp:revision>7</cp:revision>"
      "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2023-04-05T06:07:08Z</dcterms:created>"
      "<dcterms:modified xsi:type=\"dcterms:W3CDTF\">2023-05-06T07:08:09Z</dcterms:modified></cp:coreProperties>";
  const std::string docxCustom =
      "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/custom-properties\" "
      "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">"
      "<property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"2\" name=\"Reels\"><vt:i4>6</vt:i4>"
      "</property></Properties>";
  struct Case {
    bool odt;
    std::string package;
    std::vector<std::pair<std::string, std::string>> written;  // part, text it holds
  } cases[] = {
      {false,
       docxPackage("<w:p><w:r><w:t>x</w:t></w:r></w:p>", "",
                   {{"docProps/core.xml", docxProperties},
                    {"docProps/app.xml", "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/"
                                         "extended-properties\"><Company>ACME</Company></Properties>"},
                    {"docProps/custom.xml", docxCustom}}),
       {{"docProps/custom.xml", "name=\"Reels\"><vt:i4>6</vt:i4>"},
        {"docProps/custom.xml", "pid=\"3\" name=\"TN\"><vt:lpwstr>Translator &lt;&amp;&gt; Name</vt:lpwstr>"},
        {"[Content_Types].xml", "/docProps/custom.xml"},
        {"_rels/.rels", "Target=\"docProps/custom.xml\""}}},
      {true,
       odtPackage("<text:p>x</text:p>", "", "",
                  "<dc:title>Pilot</dc:title><meta:initial-creator>Ana</meta:initial-creator><dc:creator>Bea"
                  "</dc:creator><dc:description>Notes</dc:description><meta:editing-cycles>7</meta:editing-cycles>"
                  "<meta:creation-date>2023-04-05T06:07:08.123</meta:creation-date><dc:date>2023-05-06T07:08:09Z"
                  "</dc:date><meta:user-defined meta:name=\"Company\">ACME</meta:user-defined><meta:user-defined "
                  "meta:name=\"Reels\" meta:value-type=\"float\">6</meta:user-defined>"),
       {{"meta.xml", "<meta:user-defined meta:name=\"Company\">ACME</meta:user-defined><meta:user-defined "
                     "meta:name=\"Reels\" meta:value-type=\"float\">6</meta:user-defined><meta:user-defined "
                     "meta:name=\"TN\" meta:value-type=\"string\">Translator &lt;&amp;&gt; Name</meta:user-defined>"},
        {"meta.xml", "<meta:creation-date>2023-04-05T06:07:08</meta:creation-date>"}}},
  };
  const std::pair<int, std::u16string> builtins[] = {
      {wdPropertyTitle, u"Pilot"},   {wdPropertyAuthor, u"Ana"},
      {wdPropertyComments, u"Notes"}, {wdPropertyRevision, u"7"},
      {wdPropertyTimeCreated, u"2023-04-05 06:07:08"}, {wdPropertyCompany, u"ACME"}};
  for (const Case& c : cases) {
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
