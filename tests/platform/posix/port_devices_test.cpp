#include "platform/posix/port_devices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/posix/fake_device_tree.h"
#include "platform/posix/runtime_folder.h"
#include "platform/posix/usb_device.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Names(const FakeDeviceTree& tree) {
  std::vector<std::string> names;
  for (const PortDevice& port : FindPortDevices(tree.Paths()))
    names.push_back(std::filesystem::path(port.device).filename());
  return names;
}

TEST(PortDevices, AMachineWithoutAnyHasNone) { EXPECT_THAT(Names(FakeDeviceTree()), IsEmpty()); }

TEST(PortDevices, OnlyUartsThatTheKernelFoundAreListed) {
  FakeDeviceTree tree;
  tree.AddUart("ttyS0", "4");
  tree.AddUart("ttyS1", "0");
  EXPECT_THAT(Names(tree), ElementsAre("ttyS0"));
}

TEST(PortDevices, ConsolesAndPseudoTerminalsAreNoPorts) {
  FakeDeviceTree tree;
  tree.AddBare("tty0");
  tree.AddBare("console");
  tree.AddBare("ptmx");
  EXPECT_THAT(Names(tree), IsEmpty());
}

TEST(PortDevices, ABluetoothLineIsAPortWithoutAConnection) {
  FakeDeviceTree tree;
  tree.AddBare("rfcomm0");
  EXPECT_THAT(Names(tree), ElementsAre("rfcomm0"));
}

TEST(PortDevices, OfABuiltInModemOnlyTheCommandChannelIsListed) {
  FakeDeviceTree tree;
  tree.AddModemChannel("wwan0at0", "AT");
  tree.AddModemChannel("wwan0mbim0", "MBIM");
  EXPECT_THAT(Names(tree), ElementsAre("wwan0at0"));
}

TEST(PortDevices, ADeviceWithoutItsFileIsLeftOut) {
  FakeDeviceTree tree;
  tree.AddUart("ttyS0", "4");
  std::filesystem::remove(tree.Paths().devices / "ttyS0");
  EXPECT_THAT(Names(tree), IsEmpty());
}

TEST(PortDevices, NumbersAreOrderedAsNumbers) {
  FakeDeviceTree tree;
  for (const char* name : {"ttyUSB10", "ttyUSB2", "ttyACM1", "ttyUSB1"}) tree.AddUsb(name, {.socket = name});
  EXPECT_THAT(Names(tree), ElementsAre("ttyACM1", "ttyUSB1", "ttyUSB2", "ttyUSB10"));
}

TEST(PortDevices, AUsbDeviceIsShownByItsProductAndKnownByItsSerialNumber) {
  FakeDeviceTree tree;
  tree.AddUsb("ttyUSB0", {.serial = "A1B2", .manufacturer = "Huawei", .product = "E220 HSDPA Modem"});
  const PortDevice port = FindPortDevices(tree.Paths()).at(0);
  EXPECT_EQ(port.display_text, "Huawei E220 HSDPA Modem (ttyUSB0)");
  EXPECT_EQ(port.stable_id, "usb:12d1:1003:A1B2:00");
}

TEST(PortDevices, TwoPortsOfOneUsbDeviceDifferInTheirInterface) {
  FakeDeviceTree tree;
  tree.AddUsb("ttyUSB0", {.serial = "A1B2", .interface_number = "00"});
  tree.AddUsb("ttyUSB1", {.serial = "A1B2", .interface_number = "02"});
  const auto ports = FindPortDevices(tree.Paths());
  EXPECT_EQ(ports.at(0).stable_id, "usb:12d1:1003:A1B2:00");
  EXPECT_EQ(ports.at(1).stable_id, "usb:12d1:1003:A1B2:02");
}

TEST(PortDevices, AUsbDeviceWithoutASerialNumberIsKnownByItsSocket) {
  FakeDeviceTree tree, moved, renamed;
  tree.AddUsb("ttyUSB0", {.socket = "1-2"});
  renamed.AddUsb("ttyUSB3", {.socket = "1-2"});
  moved.AddUsb("ttyUSB0", {.socket = "1-3"});
  const std::string id = FindPortDevices(tree.Paths()).at(0).stable_id;
  EXPECT_EQ(id, "path:devices/pci0000:00/usb1/1-2/1-2:1.00");
  EXPECT_EQ(FindPortDevices(renamed.Paths()).at(0).stable_id, id);
  EXPECT_NE(FindPortDevices(moved.Paths()).at(0).stable_id, id);
}

TEST(PortDevices, TwinsWithOneSerialNumberAreToldApartByTheirSocket) {
  FakeDeviceTree tree;
  tree.AddUsb("ttyUSB0", {.socket = "1-2", .serial = "0001"});
  tree.AddUsb("ttyUSB1", {.socket = "1-3", .serial = "0001"});
  const auto ports = FindPortDevices(tree.Paths());
  EXPECT_EQ(ports.at(0).stable_id, "usb:12d1:1003:0001:00");
  EXPECT_EQ(ports.at(1).stable_id, "path:devices/pci0000:00/usb1/1-3/1-3:1.00");
}

TEST(PortDevices, ADeviceThatTellsNothingHasNoText) {
  FakeDeviceTree tree;
  tree.AddUart("ttyS0", "4");
  tree.AddUsb("ttyUSB0", {});
  for (const PortDevice& port : FindPortDevices(tree.Paths())) EXPECT_EQ(port.display_text, "");
}

TEST(PortDevices, ALinkIsAPortByItsNameAndComesFirst) {
  FakeDeviceTree tree;
  tree.AddUart("ttyS0", "4");
  const auto target = tree.AddDeviceFile("pts5");
  tree.AddLink("Simulated phone", target);
  const auto ports = FindPortDevices(tree.Paths());
  ASSERT_EQ(ports.size(), 2U);
  EXPECT_EQ(ports[0].display_text, "Simulated phone");
  EXPECT_EQ(ports[0].stable_id, "link:Simulated phone");
  EXPECT_EQ(ports[0].device, std::filesystem::canonical(target).string());
}

TEST(PortDevices, LinksToNothingAndOtherFilesInTheLinkFolderAreLeftOut) {
  FakeDeviceTree tree;
  tree.AddLink("Gone", "/dev/no-such-device");
  std::ofstream(tree.Paths().links / "note.txt") << "not a link";
  EXPECT_THAT(FindPortDevices(tree.Paths()), IsEmpty());
}

TEST(PortDevices, LinksInASharedPlaceCountOnlyWhileTheirFolderIsPrivate) {
  FakeDeviceTree tree;
  tree.AddLink("Phone", tree.AddDeviceFile("pts5"));
  PortPaths paths = tree.Paths();
  paths.links_in_shared_place = true;
  const std::filesystem::path parent = paths.links.parent_path();
  ASSERT_EQ(::chmod(parent.c_str(), 0700), 0);
  EXPECT_EQ(FindPortDevices(paths).size(), 1U);
  ASSERT_EQ(::chmod(parent.c_str(), 0755), 0);
  EXPECT_THAT(FindPortDevices(paths), IsEmpty());
  paths.links_in_shared_place = false;
  EXPECT_EQ(FindPortDevices(paths).size(), 1U);
}

TEST(PortPaths, ASymlinkIsNoPrivateFolder) {
  TemporaryFolder folder;
  EXPECT_TRUE(IsPrivateFolder(folder.path()));
  std::filesystem::create_symlink(folder.path(), folder.path() / "link");
  EXPECT_FALSE(IsPrivateFolder(folder.path() / "link"));
  EXPECT_FALSE(IsPrivateFolder(folder.path() / "nothing"));
}

TEST(PortPaths, LinksAreInTheRuntimeFolderOrInAPrivateOneOfTheTemporaryPlace) {
  const char* found = ::getenv("XDG_RUNTIME_DIR");
  const std::string before = found ? found : "";
  ::setenv("XDG_RUNTIME_DIR", "/run/user/77", 1);
  EXPECT_EQ(PortPaths::OfThisMachine().links, "/run/user/77/celldesk/ports");
  EXPECT_FALSE(PortPaths::OfThisMachine().links_in_shared_place);
  ::unsetenv("XDG_RUNTIME_DIR");
  EXPECT_EQ(PortPaths::OfThisMachine().links, "/tmp/celldesk-" + std::to_string(::getuid()) + "/ports");
  EXPECT_TRUE(PortPaths::OfThisMachine().links_in_shared_place);
  if (found) ::setenv("XDG_RUNTIME_DIR", before.c_str(), 1);
}

TEST(UsbDevice, TheMakerIsNamedOnce) {
  UsbDevice device;
  device.product = "HUAWEI Mobile";
  device.manufacturer = "Huawei Technologies";
  EXPECT_EQ(device.Title(), "HUAWEI Mobile");
  device.product = "FT232R USB UART";
  device.manufacturer = "FTDI";
  EXPECT_EQ(device.Title(), "FTDI FT232R USB UART");
  device.product = "";
  EXPECT_EQ(device.Title(), "FTDI");
}

TEST(UsbDevice, AttributesComeWithoutBlanksAndMissingOnesAreEmpty) {
  TemporaryFolder folder;
  folder.Write("product", "  E220 Modem \nsecond line\n");
  folder.Write("empty", "");
  EXPECT_EQ(ReadAttribute(folder.path() / "product"), "E220 Modem");
  EXPECT_EQ(ReadAttribute(folder.path() / "empty"), "");
  EXPECT_EQ(ReadAttribute(folder.path() / "missing"), "");
}

}  // namespace
}  // namespace celldesk
