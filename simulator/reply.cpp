#include "simulator/reply.h"

#include <map>

namespace celldesk::simulator {
namespace {

const std::map<int, std::string>& PhoneErrorTexts() {
  static const std::map<int, std::string> kTexts = {{0, "phone failure"},
                                                    {1, "no connection to phone"},
                                                    {3, "operation not allowed"},
                                                    {4, "operation not supported"},
                                                    {5, "PH-SIM PIN required"},
                                                    {10, "SIM not inserted"},
                                                    {11, "SIM PIN required"},
                                                    {12, "SIM PUK required"},
                                                    {13, "SIM failure"},
                                                    {14, "SIM busy"},
                                                    {15, "SIM wrong"},
                                                    {16, "incorrect password"},
                                                    {20, "memory full"},
                                                    {21, "invalid index"},
                                                    {22, "not found"},
                                                    {23, "memory failure"},
                                                    {24, "text string too long"},
                                                    {25, "invalid characters in text string"},
                                                    {26, "dial string too long"},
                                                    {27, "invalid characters in dial string"},
                                                    {30, "no network service"},
                                                    {31, "network timeout"},
                                                    {100, "unknown"}};
  return kTexts;
}

const std::map<int, std::string>& MessageErrorTexts() {
  static const std::map<int, std::string> kTexts = {{38, "network out of order"},
                                                    {41, "temporary failure"},
                                                    {42, "congestion"},
                                                    {300, "ME failure"},
                                                    {301, "SMS service of ME reserved"},
                                                    {302, "operation not allowed"},
                                                    {303, "operation not supported"},
                                                    {304, "invalid PDU mode parameter"},
                                                    {305, "invalid text mode parameter"},
                                                    {310, "SIM not inserted"},
                                                    {320, "memory failure"},
                                                    {321, "invalid memory index"},
                                                    {322, "memory full"},
                                                    {330, "SMSC address unknown"},
                                                    {331, "no network service"},
                                                    {332, "network timeout"},
                                                    {500, "unknown error"}};
  return kTexts;
}

}  // namespace

std::string ErrorText(ResultKind kind, int code) {
  const auto& texts = kind == ResultKind::kPhoneError ? PhoneErrorTexts() : MessageErrorTexts();
  const auto found = texts.find(code);
  return found == texts.end() ? "unknown error" : found->second;
}

}  // namespace celldesk::simulator
