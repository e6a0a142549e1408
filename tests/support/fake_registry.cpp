#include "support/fake_registry.h"

#include <limits>
#include <utility>
#include <vector>

#include "support/registry_data.h"

namespace celldesk {
namespace {

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

bool SameName(std::u16string_view left, std::u16string_view right) {
  if (left.size() != right.size()) return false;
  for (std::size_t i = 0; i < left.size(); ++i)
    if (Lower(left[i]) != Lower(right[i])) return false;
  return true;
}

std::vector<std::u16string_view> SplitPath(std::u16string_view path) {
  std::vector<std::u16string_view> names;
  while (!path.empty()) {
    const std::size_t end = path.find(u'\\');
    if (end != 0) names.push_back(path.substr(0, end));
    if (end == std::u16string_view::npos) break;
    path.remove_prefix(end + 1);
  }
  return names;
}

}  // namespace

struct FakeRegistry::Gate {
  int allowed = std::numeric_limits<int>::max();
  int writes = 0;

  SystemError Pass() {
    if (allowed <= 0) return kErrorAccessDenied;
    --allowed;
    ++writes;
    return kErrorSuccess;
  }
};

struct FakeRegistry::Node {
  struct Value {
    std::u16string name;
    RegistryData data;
  };

  explicit Node(std::u16string_view node_name) : name(node_name) {}

  std::shared_ptr<Node> Child(std::u16string_view child) const {
    for (const auto& subkey : subkeys)
      if (SameName(subkey->name, child)) return subkey;
    return nullptr;
  }
  Value* Find(std::u16string_view value) {
    for (Value& candidate : values)
      if (SameName(candidate.name, value)) return &candidate;
    return nullptr;
  }
  void Put(std::u16string_view value, const RegistryData& data) {
    if (Value* old = Find(value))
      old->data = data;
    else
      values.push_back({std::u16string(value), data});
  }
  void MarkDeleted() {
    deleted = true;
    values.clear();
    for (const auto& subkey : subkeys) subkey->MarkDeleted();
    subkeys.clear();
  }

  std::u16string name;
  std::vector<std::shared_ptr<Node>> subkeys;
  std::vector<Value> values;
  bool deleted = false;
};

class FakeRegistry::Key : public RegistryKey {
 public:
  Key(std::shared_ptr<Node> node, std::shared_ptr<Gate> gate)
      : node_(std::move(node)), gate_(std::move(gate)) {}

  std::optional<RegistryData> Query(std::u16string_view name) const override {
    const Node::Value* value = node_->Find(name);
    return value ? std::optional(value->data) : std::nullopt;
  }
  SystemError Set(std::u16string_view name, const RegistryData& data) override {
    if (node_->deleted) return kErrorFileNotFound;
    const SystemError error = gate_->Pass();
    if (error == kErrorSuccess) node_->Put(name, data);
    return error;
  }
  SystemError DeleteValue(std::u16string_view name) override {
    if (!node_->Find(name)) return kErrorFileNotFound;
    const SystemError error = gate_->Pass();
    if (error == kErrorSuccess)
      std::erase_if(node_->values, [&](const Node::Value& value) { return SameName(value.name, name); });
    return error;
  }
  std::vector<std::u16string> SubkeyNames() const override {
    std::vector<std::u16string> names;
    for (const auto& subkey : node_->subkeys) names.push_back(subkey->name);
    return names;
  }
  std::vector<std::u16string> ValueNames() const override {
    std::vector<std::u16string> names;
    for (const auto& value : node_->values) names.push_back(value.name);
    return names;
  }
  RegistryCounts Counts() const override { return {node_->subkeys.size(), node_->values.size()}; }

 private:
  std::shared_ptr<Node> node_;
  std::shared_ptr<Gate> gate_;
};

FakeRegistry::FakeRegistry() : gate_(std::make_shared<Gate>()) {
  for (auto& root : roots_) root = std::make_shared<Node>(u"");
}

FakeRegistry::~FakeRegistry() = default;

FakeRegistry::Node& FakeRegistry::RootNode(RegistryRoot root) const {
  return *roots_[static_cast<std::size_t>(root)];
}

std::shared_ptr<FakeRegistry::Node> FakeRegistry::Find(Node& root, std::u16string_view path) {
  Node* node = &root;
  std::shared_ptr<Node> found;
  for (std::u16string_view name : SplitPath(path)) {
    found = node->Child(name);
    if (!found) return nullptr;
    node = found.get();
  }
  return found;
}

std::unique_ptr<RegistryKey> FakeRegistry::Create(RegistryRoot root, std::u16string_view path,
                                                  KeyDisposition& disposition, SystemError& error) {
  disposition = KeyDisposition::kOpened;
  error = kErrorSuccess;
  std::shared_ptr<Node> node = roots_[static_cast<std::size_t>(root)];
  for (std::u16string_view name : SplitPath(path)) {
    std::shared_ptr<Node> child = node->Child(name);
    if (!child) {
      if (disposition == KeyDisposition::kOpened) error = gate_->Pass();
      if (error != kErrorSuccess) return nullptr;
      disposition = KeyDisposition::kCreated;
      child = node->subkeys.emplace_back(std::make_shared<Node>(name));
    }
    node = child;
  }
  return std::make_unique<Key>(node, gate_);
}

std::unique_ptr<RegistryKey> FakeRegistry::Open(RegistryRoot root, std::u16string_view path,
                                                SystemError& error) {
  auto node = SplitPath(path).empty() ? roots_[static_cast<std::size_t>(root)] : Find(RootNode(root), path);
  error = node ? kErrorSuccess : kErrorFileNotFound;
  return node ? std::make_unique<Key>(node, gate_) : nullptr;
}

SystemError FakeRegistry::Delete(RegistryRoot root, std::u16string_view path) {
  const auto node = Find(RootNode(root), path);
  if (!node) return kErrorFileNotFound;
  const SystemError error = gate_->Pass();
  if (error != kErrorSuccess) return error;
  const auto names = SplitPath(path);
  const auto last = static_cast<std::size_t>(names.back().data() - path.data());
  const auto parent = Find(RootNode(root), path.substr(0, last));
  std::erase((parent ? *parent : RootNode(root)).subkeys, node);
  node->MarkDeleted();
  return kErrorSuccess;
}

void FakeRegistry::FailWritesAfter(int allowed) { gate_->allowed = allowed; }
void FakeRegistry::AllowWrites() { gate_->allowed = std::numeric_limits<int>::max(); }
int FakeRegistry::write_count() const { return gate_->writes; }

void FakeRegistry::Put(std::u16string_view path, std::u16string_view name, RegistryData data) {
  const Gate saved = *gate_;
  AllowWrites();
  KeyDisposition disposition;
  SystemError error;
  if (const auto key = Create(RegistryRoot::kCurrentUser, path, disposition, error))
    (void)key->Set(name, data);
  *gate_ = saved;
}

void FakeRegistry::PutString(std::u16string_view name, std::u16string_view text, std::u16string_view path) {
  Put(path, name, StringData(text));
}

void FakeRegistry::PutNumber(std::u16string_view name, std::uint32_t number, std::u16string_view path) {
  Put(path, name, NumberData(number));
}

void FakeRegistry::PutBinary(std::u16string_view name, std::span<const std::uint8_t> bytes,
                             std::u16string_view path) {
  Put(path, name, BinaryData(bytes));
}

std::optional<RegistryData> FakeRegistry::At(std::u16string_view path, std::u16string_view name) const {
  const auto node = Find(RootNode(RegistryRoot::kCurrentUser), path);
  const Node::Value* value = node ? node->Find(name) : nullptr;
  return value ? std::optional(value->data) : std::nullopt;
}

std::optional<std::u16string> FakeRegistry::StringAt(std::u16string_view name,
                                                     std::u16string_view path) const {
  const auto data = At(path, name);
  if (!data || data->type != RegistryType::kString) return std::nullopt;
  std::u16string text;
  for (std::size_t i = 0; i + 1 < data->bytes.size(); i += 2)
    text += static_cast<char16_t>(data->bytes[i] | (data->bytes[i + 1] << 8));
  if (!text.empty() && text.back() == u'\0') text.pop_back();
  return text;
}

std::optional<std::uint32_t> FakeRegistry::NumberAt(std::u16string_view name,
                                                    std::u16string_view path) const {
  const auto data = At(path, name);
  if (!data || data->type != RegistryType::kNumber || data->bytes.size() != 4) return std::nullopt;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) number |= static_cast<std::uint32_t>(data->bytes[i]) << (8 * i);
  return number;
}

std::optional<std::vector<std::uint8_t>> FakeRegistry::BinaryAt(std::u16string_view name,
                                                                std::u16string_view path) const {
  const auto data = At(path, name);
  if (!data || data->type != RegistryType::kBinary) return std::nullopt;
  return data->bytes;
}

}  // namespace celldesk
