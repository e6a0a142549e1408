#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::string FileBytes(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

int RunInput(const std::string& input) {
  return LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// A target aborts when its property does not hold.
TEST(Corpus, EveryKeptInputHoldsTheProperty) {
  std::size_t inputs = 0;
  for (const auto& entry : std::filesystem::directory_iterator(CELLDESK_CORPUS)) {
    EXPECT_EQ(RunInput(FileBytes(entry.path())), 0) << entry.path();
    ++inputs;
  }
  EXPECT_GT(inputs, 0U);
}

TEST(Corpus, EveryStartOfAKeptInputHoldsTheProperty) {
  for (const auto& entry : std::filesystem::directory_iterator(CELLDESK_CORPUS)) {
    const std::string input = FileBytes(entry.path());
    for (std::size_t length = 0; length < input.size(); ++length) {
      EXPECT_EQ(RunInput(input.substr(0, length)), 0) << entry.path() << " cut at " << length;
    }
  }
}

}  // namespace
