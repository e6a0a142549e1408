#include "support/fake_registry.h"

#include "platform/registry_contract.h"

namespace celldesk {
namespace {

class MemoryStore {
 public:
  Registry& registry() { return registry_; }

 private:
  FakeRegistry registry_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, RegistryContract, MemoryStore);

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;

TEST(FakeRegistry, WritesFailFromTheStepThatWasNamed) {
  FakeRegistry registry;
  KeyDisposition disposition;
  SystemError error = kErrorSuccess;
  registry.FailWritesAfter(2);
  const auto key = registry.Create(kUser, kSettingsPath, disposition, error);
  ASSERT_NE(key, nullptr);
  EXPECT_EQ(key->Set(u"a", NumberData(1)), kErrorSuccess);
  EXPECT_EQ(key->Set(u"a", NumberData(2)), kErrorAccessDenied);
  EXPECT_EQ(key->DeleteValue(u"a"), kErrorAccessDenied);
  EXPECT_EQ(registry.Delete(kUser, kSettingsPath), kErrorAccessDenied);
  EXPECT_EQ(registry.Create(kUser, u"Other", disposition, error), nullptr);
  EXPECT_EQ(error, kErrorAccessDenied);
  EXPECT_EQ(key->Query(u"a"), NumberData(1));
  EXPECT_EQ(registry.write_count(), 2);
  registry.AllowWrites();
  EXPECT_EQ(key->Set(u"a", NumberData(2)), kErrorSuccess);
}

TEST(FakeRegistry, ShortWaysInAndOutAgreeWithTheInterface) {
  FakeRegistry registry;
  registry.FailAllWrites();
  registry.PutString(u"Port", u"COM2:");
  registry.PutNumber(u"DI27", 1);
  registry.PutBinary(u"COM2:", std::vector<std::uint8_t>{1, 2});
  SystemError error = kErrorSuccess;
  const auto key = registry.Open(kUser, kSettingsPath, error);
  ASSERT_NE(key, nullptr);
  EXPECT_EQ(key->Query(u"Port"), StringData(u"COM2:"));
  EXPECT_EQ(registry.StringAt(u"Port"), u"COM2:");
  EXPECT_EQ(registry.NumberAt(u"DI27"), 1U);
  EXPECT_EQ(registry.BinaryAt(u"COM2:"), (std::vector<std::uint8_t>{1, 2}));
  EXPECT_EQ(registry.NumberAt(u"Port"), std::nullopt);
  EXPECT_EQ(registry.StringAt(u"Nothing"), std::nullopt);
}

}  // namespace
}  // namespace celldesk
