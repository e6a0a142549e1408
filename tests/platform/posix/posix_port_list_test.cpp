#include "platform/posix/posix_port_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/posix/fake_device_tree.h"
#include "support/fake_registry.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::u16string_view kPorts = u"\\Software\\Corvane\\CellDesk\\Ports";

class PosixPortListTest : public testing::Test {
 protected:
  /// "COM1:=ttyS0" and so on, as a program that starts now sees them.
  std::vector<std::string> Ports() {
    PosixPortList list(registry_, tree_.Paths());
    return PortsOf(list);
  }
  static std::vector<std::string> PortsOf(PosixPortList& list) {
    std::vector<std::string> ports;
    for (const PortInfo& port : list.ActivePorts()) {
      const std::u16string device = port.device.substr(port.device.rfind(u'/') + 1);
      ports.push_back(std::string(port.name.begin(), port.name.end()) + "=" +
                      std::string(device.begin(), device.end()));
    }
    return ports;
  }
  void AddUsb(const std::string& name, const std::string& serial) {
    tree_.AddUsb(name, {.socket = "1-" + serial, .serial = serial});
  }

  FakeDeviceTree tree_;
  FakeRegistry registry_;
};

TEST_F(PosixPortListTest, NamesAreGivenInOrder) {
  tree_.AddUart("ttyS0", "4");
  AddUsb("ttyUSB0", "A");
  EXPECT_THAT(Ports(), ElementsAre("COM1:=ttyS0", "COM2:=ttyUSB0"));
}

TEST_F(PosixPortListTest, ADeviceKeepsItsNameUnderAnotherSystemName) {
  AddUsb("ttyUSB0", "A");
  AddUsb("ttyUSB1", "B");
  EXPECT_THAT(Ports(), ElementsAre("COM1:=ttyUSB0", "COM2:=ttyUSB1"));
  tree_.Remove("ttyUSB0");
  tree_.Remove("ttyUSB1");
  tree_.AddUsb("ttyUSB7", {.socket = "9-9", .serial = "B"});
  EXPECT_THAT(Ports(), ElementsAre("COM2:=ttyUSB7"));
}

TEST_F(PosixPortListTest, AnAbsentDevicesNameIsNotGivenAway) {
  AddUsb("ttyUSB0", "A");
  EXPECT_THAT(Ports(), ElementsAre("COM1:=ttyUSB0"));
  tree_.Remove("ttyUSB0");
  AddUsb("ttyUSB1", "B");
  EXPECT_THAT(Ports(), ElementsAre("COM2:=ttyUSB1"));
}

TEST_F(PosixPortListTest, WhenAllNamesAreTakenTheHighestOfAnAbsentDeviceIsGivenAway) {
  for (int i = 0; i < 9; ++i) AddUsb("ttyUSB" + std::to_string(i), std::to_string(i));
  EXPECT_EQ(Ports().size(), 9U);
  tree_.Remove("ttyUSB2");
  tree_.Remove("ttyUSB5");
  AddUsb("ttyUSB9", "new");
  const auto ports = Ports();
  EXPECT_EQ(ports.size(), 8U);
  EXPECT_THAT(ports, testing::Contains("COM6:=ttyUSB9"));
  EXPECT_THAT(ports, testing::Not(testing::Contains(testing::StartsWith("COM3:"))));
}

TEST_F(PosixPortListTest, BeyondNineDevicesOneIsLeftOut) {
  for (int i = 0; i < 10; ++i) AddUsb("ttyUSB" + std::to_string(i), std::to_string(i));
  const auto ports = Ports();
  EXPECT_EQ(ports.size(), 9U);
  EXPECT_EQ(ports.back(), "COM9:=ttyUSB8");
}

TEST_F(PosixPortListTest, TheRegistryTellsWhoseANameIs) {
  AddUsb("ttyUSB0", "A");
  EXPECT_THAT(Ports(), ElementsAre("COM1:=ttyUSB0"));
  EXPECT_EQ(registry_.StringAt(u"COM1:", kPorts), u"usb:12d1:1003:A:00");
  registry_.PutString(u"COM1:", u"link:Another", kPorts);
  registry_.PutString(u"COM4:", u"usb:12d1:1003:A:00", kPorts);
  EXPECT_THAT(Ports(), ElementsAre("COM4:=ttyUSB0"));
}

TEST_F(PosixPortListTest, ANameIsWrittenOnce) {
  AddUsb("ttyUSB0", "A");
  (void)Ports();
  const int writes = registry_.write_count();
  (void)Ports();
  EXPECT_EQ(registry_.write_count(), writes);
}

TEST_F(PosixPortListTest, WithoutAStoreNamesHoldForTheRun) {
  registry_.FailAllWrites();
  AddUsb("ttyUSB0", "A");
  AddUsb("ttyUSB1", "B");
  PosixPortList list(registry_, tree_.Paths());
  EXPECT_THAT(PortsOf(list), ElementsAre("COM1:=ttyUSB0", "COM2:=ttyUSB1"));
  tree_.Remove("ttyUSB0");
  EXPECT_THAT(PortsOf(list), ElementsAre("COM2:=ttyUSB1"));
}

TEST_F(PosixPortListTest, ValuesThatAreNoIdsAreOverlooked) {
  registry_.PutNumber(u"COM1:", 5, kPorts);
  registry_.PutString(u"COM2:", u"", kPorts);
  AddUsb("ttyUSB0", "A");
  EXPECT_THAT(Ports(), ElementsAre("COM1:=ttyUSB0"));
}

TEST_F(PosixPortListTest, APortThatComesAndGoesIsSeenByTheSameList) {
  PosixPortList list(registry_, tree_.Paths());
  EXPECT_THAT(PortsOf(list), IsEmpty());
  tree_.AddLink("Simulated phone", tree_.AddDeviceFile("pts5"));
  EXPECT_THAT(PortsOf(list), ElementsAre("COM1:=pts5"));
  tree_.RemoveLink("Simulated phone");
  EXPECT_THAT(PortsOf(list), IsEmpty());
}

TEST_F(PosixPortListTest, TheTextIsThePortsNameWhenTheDeviceTellsNothing) {
  tree_.AddUart("ttyS0", "4");
  tree_.AddUsb("ttyUSB0", {.product = "Modem"});
  PosixPortList list(registry_, tree_.Paths());
  const auto ports = list.ActivePorts();
  EXPECT_EQ(ports.at(0).display_text, u"COM1:");
  EXPECT_EQ(ports.at(1).display_text, u"Modem (ttyUSB0)");
}

TEST_F(PosixPortListTest, ThisMachinesPortsCanBeListed) {
  PosixPortList list(registry_);
  for (const PortInfo& port : list.ActivePorts()) {
    EXPECT_TRUE(port.name.starts_with(u"COM"));
    EXPECT_TRUE(port.device.starts_with(u'/'));
    EXPECT_FALSE(port.stable_id.empty());
  }
}

}  // namespace
}  // namespace celldesk
