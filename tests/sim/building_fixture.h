// What the tests of the virtual building share: a building in memory or on a file, an opened device, short
// ways to a property, and the sentence of a refusal.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <random>
#include <string>
#include <utility>

#include "automation/error.h"
#include "automation/object.h"
#include "simulator/building.h"

namespace sim_test {

inline constexpr char kFirstDevice[] = "RTU-1 North wing";
inline constexpr char kSecondDevice[] = "RTU-2 South wing";

inline simulator::BuildingOptions Options(std::filesystem::path store = {}, char decimal = '.') {
  return {SIM_DATA_DIR, std::move(store), base::Numbers(decimal), {}, "2.7"};
}

inline automation::Object Connect(const simulator::Building& building, const automation::Object& server) {
  return server.Call("Connect", building.NetworkName(), building.IpAddress(), building.Port()).AsObject();
}

inline std::string OpenSession(const simulator::Building& building, const automation::Object& network) {
  return network.Call("OpenSession", building.NetworkName(), true, "LON1", 1, "8000AB0C12340001").AsText();
}

/// A client that has a device open, with its template loaded.
struct Client {
  explicit Client(simulator::Building& building, const std::string& deviceName = kFirstDevice)
      : server(building.ObjectServer()), network(Connect(building, server)) {
    EXPECT_EQ(OpenSession(building, network), "OK");
    device = network.Child("AppDevices").Call("Item", deviceName).AsObject();
    EXPECT_TRUE(device.Call("AddLmo", 1, "8000AB0C12340001", "t.bin", building.TemplateBytes()).AsBool());
  }

  automation::Object LonMark(const std::string& name) const {
    return device.Child("LonMarkObjects").Call("Item", name).AsObject();
  }
  automation::Object Property(const std::string& object, int number) const {
    return LonMark(object).Child("ConfigProperties").Call("Item", number).AsObject();
  }
  automation::Object Variable(const std::string& object, const std::string& name) const {
    return LonMark(object).Child("NetworkVariables").Call("Item", name).AsObject();
  }

  automation::Object server;
  automation::Object network;
  automation::Object device;
};

/// A building with an open device.
struct OpenBuilding : testing::Test {
  simulator::Building building{Options()};
  Client client{building};
};

/// The sentence with which `action` was refused, and its error code; a test failure when it was not.
template <class Action>
std::string RefusalOf(const Action& action, std::uint32_t* code = nullptr) {
  try {
    action();
  } catch (const std::exception& error) {
    if (code) *code = dynamic_cast<const automation::Error&>(error).Code();
    return error.what();
  }
  ADD_FAILURE() << "was not refused";
  return {};
}

/// A folder of its own with a place for a store, removed at the end.
struct Folder {
  // The random part keeps two runs on one machine apart.
  Folder()
      : path(std::filesystem::path(testing::TempDir()) / ("tarn-" + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directories(path);
  }
  ~Folder() { std::filesystem::remove_all(path); }
  /// No store can be written while this folder stands in its way.
  std::filesystem::path Obstacle() const { return path / "store.json.new"; }

  std::filesystem::path path, store = path / "store.json";
};

}  // namespace sim_test
