#include "platform/vdir/vcard_parameters.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

TEST(VcardParameters, KnowsTheKindsOfANumberInEveryVersionsForm) {
  for (const char* text :
       {"TYPE=CELL", "CELL", "type=cell", "TYPE=VOICE,CELL", "TYPE=VOICE;TYPE=CELL", "VOICE;CELL",
        "TYPE=\"voice,cell\"", "TYPE=\"voice\",\"cell\"", "PREF=1;TYPE=cell", " TYPE = CELL "}) {
    const VcardParameters parameters = VcardParameters::Parse(text);
    EXPECT_TRUE(parameters.cell) << text;
    EXPECT_FALSE(parameters.work || parameters.home || parameters.no_voice) << text;
  }
  EXPECT_TRUE(VcardParameters::Parse("TYPE=WORK,HOME").work);
  EXPECT_TRUE(VcardParameters::Parse("TYPE=WORK,HOME").home);
}

TEST(VcardParameters, KnowsWhatNobodySpeaksTo) {
  for (const char* text : {"TYPE=FAX", "WORK;FAX", "TYPE=\"home,pager\"", "MODEM", "TYPE=BBS"})
    EXPECT_TRUE(VcardParameters::Parse(text).no_voice) << text;
  EXPECT_FALSE(VcardParameters::Parse("TYPE=VOICE,MSG,CAR,VIDEO").no_voice);
}

TEST(VcardParameters, KnowsEncodingsAndTheCharacterSet) {
  const VcardParameters parameters =
      VcardParameters::Parse("CHARSET=\"windows-1250\";ENCODING=quoted-printable");
  EXPECT_EQ(parameters.charset, "windows-1250");
  EXPECT_TRUE(parameters.quoted_printable);
  EXPECT_TRUE(VcardParameters::Parse("QUOTED-PRINTABLE").quoted_printable);
  EXPECT_TRUE(VcardParameters::Parse("ENCODING=BASE64").base64);
  EXPECT_TRUE(VcardParameters::Parse("ENCODING=b").base64);
  EXPECT_TRUE(VcardParameters::Parse("VALUE=uri").uri);
}

TEST(VcardParameters, PassesOverOtherNamesAndWords) {
  for (const char* text : {"", ";;;", "=", "==;=CELL", "X-TYPE=CELL", "LABEL=\"a;CELL;b\"", "CELLULAR", "CEL",
                           ",", "LABEL=\"CELL", "TYPE=", "TYPE=\"", "ALTID=1;LANGUAGE=cs"}) {
    const VcardParameters parameters = VcardParameters::Parse(text);
    EXPECT_FALSE(parameters.cell || parameters.work || parameters.home || parameters.no_voice ||
                 parameters.quoted_printable || parameters.base64 || parameters.uri)
        << text;
    EXPECT_EQ(parameters.charset, "") << text;
  }
}

}  // namespace
}  // namespace celldesk
