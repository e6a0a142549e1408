#include <gtest/gtest.h>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

struct Row {
  std::string_view line;
  std::string answer;
};

/// Each row on a fresh phone.
template <std::size_t kRows>
void ExpectAnswers(const Row (&rows)[kRows]) {
  for (const Row& row : rows) {
    SimulatedPhone phone = QuietPhone();
    EXPECT_EQ(Ask(phone, row.line), row.answer) << row.line;
  }
}

TEST(IdentityCommands, AnswersEachAsItShould) {
  const Row kTable[] = {
      {"AT+CGMI", Answer({"Corvane"})},
      {"AT+GMI", Answer({"Corvane"})},
      {"AT+CGMM", Answer({"Simulated Phone"})},
      {"AT+GMM", Answer({"Simulated Phone"})},
      {"AT+CGMR", Answer({"1.0"})},
      {"AT+GMR", Answer({"1.0"})},
      {"AT+CGSN", Answer({"490154203237518"})},
      {"AT+GSN", Answer({"490154203237518"})},
      {"AT+CIMI", Answer({"001010123456789"})},
      {"AT+GCAP", Answer({"+GCAP: +CGSM"})},
      {"AT+CGMI=?", kOk},
      {"AT+CGMI?", kError},
      {"AT+CIMI=1", kError},
      {"AT+CNUM", Answer({R"(+CNUM: "Own number","+447700900123",145)"})},
      {"AT+CNUM=?", kOk},
  };
  ExpectAnswers(kTable);
}

TEST(NetworkCommands, AnswersEachAsItShould) {
  const Row kTable[] = {
      {"AT+CSQ", Answer({"+CSQ: 21,99"})},
      {"AT+CSQ=?", Answer({"+CSQ: (0-31,99),(99)"})},
      {"AT+CSQ?", kError},
      {"AT+CREG?", Answer({"+CREG: 0,1"})},
      {"AT+CREG=?", Answer({"+CREG: (0-2)"})},
      {"AT+CREG=2;+CREG?", Answer({R"(+CREG: 2,1,"0001","0001")"})},
      {"AT+CREG=3", kError},
      {"AT+CGREG?", Answer({"+CGREG: 0,1"})},
      {"AT+CGREG=2;+CGREG?", Answer({R"(+CGREG: 2,1,"0001","0001")"})},
      {"AT+CGATT?", Answer({"+CGATT: 0"})},
      {"AT+CGATT=?", Answer({"+CGATT: (0)"})},
      {"AT+CGATT=0", kOk},
      {"AT+CGATT=1", kError},
      {"AT+COPS?", Answer({R"(+COPS: 0,0,"Loopback")"})},
      {"AT+COPS=3,2;+COPS?", Answer({R"(+COPS: 0,2,"00101")"})},
      {"AT+COPS=?", Answer({R"(+COPS: (2,"Loopback","Loop","00101"),,(0-4),(0-2))"})},
      {"AT+COPS=0,9", kError},
      {"AT+CPIN?", Answer({"+CPIN: READY"})},
      {"AT+CPIN=?", kOk},
      {"AT+CPIN=\"1234\"", kError},
      {"AT+CFUN?", Answer({"+CFUN: 1"})},
      {"AT+CFUN=1", kOk},
      {"AT+CFUN=0", kError},
      {"AT+CFUN=?", Answer({"+CFUN: (1),(0)"})},
      {"AT+CPAS", Answer({"+CPAS: 0"})},
      {"AT+CPAS=?", Answer({"+CPAS: (0)"})},
      {"AT+CBC", Answer({"+CBC: 0,80"})},
      {"AT+CBC=?", Answer({"+CBC: (0-3),(0-100)"})},
      {"AT+CCLK?", Answer({R"(+CCLK: "26/01/05,12:00:00+00")"})},
      {"AT+CCLK=?", kOk},
      {"AT+CCLK=\"31/12/31,23:59:59+00\";+CCLK?", Answer({R"(+CCLK: "31/12/31,23:59:59+00")"})},
      {"AT+CCLK=\"soon\"", kError},
      {"AT+CSCS?", Answer({R"(+CSCS: "GSM")"})},
      {"AT+CSCS=?", Answer({R"(+CSCS: ("GSM","UCS2","HEX","IRA"))"})},
      {"AT+CSCS=\"ucs2\";+CSCS?", Answer({R"(+CSCS: "UCS2")"})},
      {"AT+CSCS=\"8859-1\"", kError},
      {"AT+CMEE?", Answer({"+CMEE: 0"})},
      {"AT+CMEE=?", Answer({"+CMEE: (0-2)"})},
      {"AT+CMEE=1;+CMEE?", Answer({"+CMEE: 1"})},
      {"AT+CMEE=3", kError},
      {"AT+CMEE", kOk},
  };
  ExpectAnswers(kTable);
}

TEST(NetworkCommands, TheErrorLevelChoosesTheFormOfPhoneErrors) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "AT+CPBR=251"), kError);
  ASSERT_EQ(Ask(phone, "AT+CMEE=1"), kOk);
  EXPECT_EQ(Ask(phone, "AT+CPBR=251"), CmeError(21));
  ASSERT_EQ(Ask(phone, "AT+CMEE=2"), kOk);
  EXPECT_EQ(Ask(phone, "AT+CPBR=251"), "\r\n+CME ERROR: invalid index\r\n");
}

TEST(NetworkCommands, MessageErrorsHaveTheirCodeAtEveryLevel) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "AT+CMGR=9"), CmsError(321));
  ASSERT_EQ(Ask(phone, "AT+CMEE=1"), kOk);
  EXPECT_EQ(Ask(phone, "AT+CMGR=9"), CmsError(321));
  ASSERT_EQ(Ask(phone, "AT+CMEE=2"), kOk);
  EXPECT_EQ(Ask(phone, "AT+CMGR=9"), "\r\n+CMS ERROR: invalid memory index\r\n");
}

TEST(NetworkCommands, TheClockGoesOnFromWhereItWasSet) {
  SimulatedPhone phone = QuietPhone();
  PhoneSeconds now = 1000;
  phone.set_clock([&now] { return now; });
  ASSERT_EQ(Ask(phone, "AT+CCLK=\"26/06/01,08:00:00+00\""), kOk);
  now += 61;
  EXPECT_EQ(Ask(phone, "AT+CCLK?"), Answer({R"(+CCLK: "26/06/01,08:01:01+00")"}));
}

TEST(MessageSettingCommands, AnswersEachAsItShould) {
  const Row kTable[] = {
      {"AT+CMGF?", Answer({"+CMGF: 0"})},
      {"AT+CMGF=?", Answer({"+CMGF: (0,1)"})},
      {"AT+CMGF=1;+CMGF?", Answer({"+CMGF: 1"})},
      {"AT+CMGF=2", CmsError(302)},
      {"AT+CSCA?", Answer({R"(+CSCA: "+447700900000",145)"})},
      {"AT+CSCA=?", kOk},
      {"AT+CSCA=\"+447700900001\";+CSCA?", Answer({R"(+CSCA: "+447700900001",145)"})},
      {"AT+CSCA=\"447700900001\",145;+CSCA?", Answer({R"(+CSCA: "+447700900001",145)"})},
      {"AT+CSCA=\"07700900001\",129;+CSCA?", Answer({R"(+CSCA: "07700900001",129)"})},
      {"AT+CSCA=\"nobody\"", CmsError(302)},
      {"AT+CSMP?", Answer({"+CSMP: 17,167,0,0"})},
      {"AT+CSMP=?", kOk},
      {"AT+CSMP=49,170,1,8;+CSMP?", Answer({"+CSMP: 49,170,1,8"})},
      {"AT+CSMP=,170;+CSMP?", Answer({"+CSMP: 17,170,0,0"})},
      {"AT+CSMP=17,256", CmsError(305)},
      {"AT+CSMP=0", CmsError(305)},
      {"AT+CSDH?", Answer({"+CSDH: 0"})},
      {"AT+CSDH=?", Answer({"+CSDH: (0,1)"})},
      {"AT+CSDH=1;+CSDH?", Answer({"+CSDH: 1"})},
      {"AT+CSDH=5", CmsError(302)},
      {"AT+CSMS?", Answer({"+CSMS: 0,1,1,1"})},
      {"AT+CSMS=?", Answer({"+CSMS: (0,1)"})},
      {"AT+CSMS=1", Answer({"+CSMS: 1,1,1"})},
      {"AT+CSMS=7", CmsError(302)},
      {"AT+CNMI?", Answer({"+CNMI: 0,0,0,0,0"})},
      {"AT+CNMI=?", Answer({"+CNMI: (0-3),(0-3),(0-3),(0-2),(0,1)"})},
      {"AT+CNMI=2,1;+CNMI?", Answer({"+CNMI: 2,1,0,0,0"})},
      {"AT+CNMI=2,1,0,2,1;+CNMI?", Answer({"+CNMI: 2,1,0,2,1"})},
      {"AT+CNMI=9", CmsError(302)},
      {"AT+CPMS=?", Answer({R"(+CPMS: ("SM","ME"),("SM","ME"),("SM","ME"))"})},
      {"AT+CPMS?", Answer({R"(+CPMS: "SM",0,30,"SM",0,30,"SM",0,30)"})},
      {"AT+CPMS=\"ME\"", Answer({"+CPMS: 0,100,0,30,0,30"})},
      {"AT+CPMS=\"ME\",\"ME\"", Answer({"+CPMS: 0,100,0,100,0,30"})},
      {"AT+CPMS=\"sm\",\"me\",\"me\"", Answer({"+CPMS: 0,30,0,100,0,100"})},
      {"AT+CPMS=\"BM\"", CmsError(302)},
      {"AT+CPMS=\"SM\",\"XX\"", CmsError(302)},
      {"AT+CSCB=?", Answer({"+CSCB: (0,1)"})},
      {"AT+CSCB?", Answer({R"(+CSCB: 0,"","")"})},
      {"AT+CSCB=0", kOk},
      {"AT+CNMA=?", Answer({"+CNMA: (0-2)"})},
      {"AT+CNMA", kOk},
  };
  ExpectAnswers(kTable);
}

TEST(MessageSettingCommands, ARefusedSelectionChangesNothing) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CPMS=\"ME\",\"XX\""), CmsError(302));
  EXPECT_EQ(Ask(phone, "AT+CPMS?"), Answer({R"(+CPMS: "SM",0,30,"SM",0,30,"SM",0,30)"}));
}

}  // namespace
}  // namespace celldesk::simulator
