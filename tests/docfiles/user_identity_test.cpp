#include <gtest/gtest.h>

#include "script/user_identity.h"

namespace quillon::testing {
namespace {

TEST(UserIdentity, TheFullNameIsTheFirstGecosFieldWithTheLoginForAmpersand) {
  EXPECT_EQ(gecosFullName("Ana Pérez,Room 4,555-1234,", "ana"), u"Ana Pérez");
  EXPECT_EQ(gecosFullName("& Smith", "jane"), u"Jane Smith");
  EXPECT_EQ(gecosFullName("", "root"), u"");
  EXPECT_EQ(accountUserAddress(), u"");
}

}  // namespace
}  // namespace quillon::testing
