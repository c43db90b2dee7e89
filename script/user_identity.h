// Who is working at the station, for the word processor's UserName and
// UserAddress.
//
// The name is the full-name part of the account's GECOS field in the
// password database (the text before the first comma, with "&" standing for
// the login name capitalised, as finger shows it); empty when the account
// has none. No system source holds a postal address, so the address is
// empty.
#pragma once

#include "core/text.h"

namespace quillon {

u16 accountUserName();
u16 accountUserAddress();

// The full name within a GECOS field; `login` stands in for "&".
u16 gecosFullName(std::string_view gecos, std::string_view login);

}  // namespace quillon
