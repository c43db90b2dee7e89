// The office around the document: the filter Writer stores each file type
// with, and the operator's user data from LibreOffice's settings.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

#include "script/writer/uno_support.h"

namespace quillon {

// The export filter for a file extension (lower case, no dot); nullptr for
// a type Writer is not asked to write.
const char* writerFilterFor(const std::string& extension);

// "Given name Surname" and the postal lines from Tools > Options > User Data.
u16 writerUserName(const uno::Reference<uno::css::uno::XComponentContext>& office);
u16 writerUserAddress(const uno::Reference<uno::css::uno::XComponentContext>& office);

}  // namespace quillon
