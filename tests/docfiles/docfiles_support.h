// Building small .docx and .odt packages by hand for the tests.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "script/files/office_formats.h"
#include "script/files/zip_package.h"
#include "script/memory_document.h"

namespace quillon::testing {

inline constexpr const char* kW = "xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"";

// A package of the given parts, zipped.
std::string zipOf(const std::map<std::string, std::string>& parts);

// A .docx whose body is `body` (w: elements), with optional styles and
// further parts.
std::string docxPackage(const std::string& body, const std::string& styles = "",
                        std::map<std::string, std::string> extra = {});
// An .odt whose office:text holds `text`, with optional automatic and common styles.
std::string odtPackage(const std::string& text, const std::string& automaticStyles = "",
                       const std::string& commonStyles = "", const std::string& meta = "");

// The package's bytes read as a document, or a document built into bytes;
// either fails the test on error.
std::unique_ptr<MemoryDocument> loadPackage(const std::string& bytes, bool odt);
std::string buildPackage(const MemoryDocument& doc, bool odt);

// The part of a package as text; empty when missing.
std::string partOf(const std::string& packageBytes, const std::string& name);

// Text and italic flags of a document as "text" with italic characters
// wrapped in <i>..</i>, '\n' for CR, for readable comparisons.
std::u16string marked(const MemoryDocument& doc);

// Loads by extension through the registered formats; fails the test on error.
std::unique_ptr<MemoryDocument> loadOrFail(const std::string& path);

// `actual` against tests/docfiles/golden/`name`, byte for byte;
// QUILLON_UPDATE_GOLDEN=1 rewrites the file instead.
::testing::AssertionResult matchesGolden(const std::string& name, const std::string& actual);
std::string goldenFile(const std::string& name);

}  // namespace quillon::testing
