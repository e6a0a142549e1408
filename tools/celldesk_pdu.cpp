// Decodes and encodes short-message PDUs on the command line.

#include <iostream>
#include <string>
#include <vector>

#include "celldesk_pdu_decode.h"
#include "celldesk_pdu_encode.h"

namespace {

constexpr const char* kUsage =
    "usage: celldesk-pdu decode [--json] [STATUS LENGTH HEX]\n"
    "         STATUS  where the phone keeps it: 0 received unread, 1 received read, 2 stored unsent, 3 "
    "stored sent\n"
    "         LENGTH  octets of the TPDU, without the service centre\n"
    "         HEX     the PDU; without arguments, one message for each line of standard input\n"
    "       celldesk-pdu encode --to NUMBER --text TEXT [--relative N | --until \"YYYY-MM-DD HH:MM:SS\"]\n"
    "         [--report] [--reply-path] [--reference N] [--centre NUMBER]\n"
    "         prints the PDU and the length of its TPDU in octets\n";

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const std::string command = arguments.empty() ? std::string() : arguments.front();
  if (command == "decode") return celldesk::RunDecode({arguments.begin() + 1, arguments.end()});
  if (command == "encode") return celldesk::RunEncode({arguments.begin() + 1, arguments.end()});
  const bool help = command == "--help";
  (help ? std::cout : std::cerr) << kUsage;
  return help ? 0 : 1;
}
