// SPDX-License-Identifier: MIT
// A scenario's world on the virtual clock: what happens when, what goes wrong, what it tells.
#include "sim/scene/card_text.h"
#include "sim/scene/world.h"
#include "sim/wire/line.h"
#include "tests/support/virtual_time.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace zel::test {

namespace {

using namespace zel::sim;

constexpr std::uint64_t kSecond = 1'000'000;

const std::string kBench = "format = 1\n"
                           "[[card]]\nname = \"staff\"\nid = \"26:3512\"\n"
                           "[[card]]\nname = \"stripe\"\ntracks = [\"%B0?\"]\n"
                           "[[device]]\nname = \"door\"\nkind = \"zelTag\"\nluid = 7\n"
                           "settings = { iIDHoldTO = 1500 }\n"
                           "[[device]]\nname = \"till\"\nkind = \"zelBand\"\n"
                           "at = \"/dev/ttySIM1\"\nluid = 300\n"
                           "settings = { \"LedColor[0]\" = 2, \"UserField[10].Keybyte[15]\" = 9 }\n"
                           "[[device]]\nname = \"gate\"\nkind = \"zelEcho\"\n";

class SceneWorld : public ::testing::Test {
protected:
    ~SceneWorld() override {
        world_.reset();
        usbBus().clear();
        lines().clear();
    }

    World& put(const std::string& events = "", const std::string& head = "") {
        const auto scenario = parseScenario(head + kBench + events, "s.toml");
        if (const auto* const trouble = std::get_if<Trouble>(&scenario))
            ADD_FAILURE() << asLine(*trouble);
        world_ = std::make_unique<World>(std::get<Scenario>(scenario));
        world_->start();
        world_->advance();
        return *world_;
    }

    DeviceState state(const std::string& name) {
        for (const DeviceState& each : world_->states())
            if (each.name == name)
                return each;
        ADD_FAILURE() << "no device " << name;
        return {};
    }

    // What a device is set to, by the name of a word.
    int setting(const std::string& device, const std::string& name) {
        for (const auto& [word, value] : state(device).settings)
            if (word == name)
                return value;
        return -1;
    }

    void pass(double seconds) {
        wait(static_cast<std::uint64_t>(seconds * 1e6));
        world_->advance();
    }

    std::string card() {
        const auto card = state("door").card;
        return card ? cardText(*card) : "none";
    }

    std::string refusal(const std::string& device, const Action& action) {
        const auto result = world_->perform(device, action);
        const auto* const trouble = std::get_if<Trouble>(&result);
        return trouble ? asLine(*trouble) : "";
    }

    bool send(void* handle) {
        const unsigned char report[8] = {0x8F};
        return usbBus().backend().setFeature(handle, 0, report, sizeof report) != 0;
    }

    std::unique_ptr<World> world_;
};

TEST_F(SceneWorld, HasItsDevicesWhereTheScenarioPutsThem) {
    put();
    EXPECT_EQ(state("door").place, "usb");
    EXPECT_EQ(state("till").place, "/dev/ttySIM1");
    ASSERT_EQ(usbBus().presentPorts().size(), 2U);
    EXPECT_EQ(usbBus().identity(0).name, "sim:door");
    EXPECT_EQ(usbBus().identity(1).name, "sim:gate");
}

TEST_F(SceneWorld, SetsItsDevicesByTheWordsOfTheLibrary) {
    put();
    EXPECT_EQ(setting("door", "TimeParms.iIDHoldTO"), 1500);
    EXPECT_EQ(setting("till", "LedColor[0]"), 2);
    EXPECT_EQ(setting("till", "LedColor[1]"), 0) << "as in the factory";
    EXPECT_EQ(setting("till", "LUID"), 300);
    EXPECT_EQ(setting("till", "UserField[10].Keybyte[15]"), 9);
    EXPECT_EQ(setting("till", "UserField[0].Enable"), 1);
}

TEST_F(SceneWorld, KeepsItsSettingsOverALossOfPower) {
    World& world = put();
    world.perform("door", Unplug{});
    world.perform("door", Plug{});
    world.perform("till", Unplug{});
    world.perform("till", Plug{});
    EXPECT_EQ(setting("door", "TimeParms.iIDHoldTO"), 1500);
    EXPECT_EQ(setting("till", "LedColor[0]"), 2);
}

TEST_F(SceneWorld, CarriesEventsOutWhenTheyAreDue) {
    put("[[event]]\nat = 3\nremove = true\n[[event]]\nat = 1\ntap = \"staff\"\n");
    EXPECT_EQ(card(), "none");
    pass(0.9);
    EXPECT_EQ(card(), "none");
    EXPECT_EQ(world_->untilNextEvent(), kSecond / 10);
    pass(0.1);
    EXPECT_EQ(card(), "0x02341B70/26");
    pass(2);
    EXPECT_EQ(card(), "none");
    EXPECT_FALSE(world_->untilNextEvent());
}

TEST_F(SceneWorld, StartsOverWhereTheScenarioRepeats) {
    put("[[event]]\nat = 1\ntap = \"1:1\"\nfor = 1\n", "repeat = 5\n");
    for (int turn = 0; turn < 3; ++turn) {
        EXPECT_EQ(world_->untilNextEvent(), kSecond) << turn;
        pass(1);
        EXPECT_NE(card(), "none") << turn;
        pass(1);
        EXPECT_EQ(card(), "none") << turn;
        pass(3);
    }
}

TEST_F(SceneWorld, LeavesACardThatIsTappedLaterInTheField) {
    World& world = put();
    world.perform("", Tap{*cardIn("1:1"), 2.0});
    pass(1);
    world.perform("", Tap{*cardIn("26:3512")});
    pass(5);
    EXPECT_EQ(card(), "0x02341B70/26");
}

TEST_F(SceneWorld, SaysWhichDevicesMayBeMeant) {
    put();
    EXPECT_EQ(refusal("", Unplug{}),
              "several devices may be meant; name one of these: door, till, gate");
    EXPECT_EQ(refusal("dor", Unplug{}), "there is no device dor; did you mean door?");
    EXPECT_EQ(refusal("till", Tap{}),
              "till is a zelBand, none that takes cards in its field; name another device");
}

TEST_F(SceneWorld, FailsASendAsOftenAsItIsAskedTo) {
    World& world = put();
    void* const handle = usbBus().open(0);
    world.perform("door", FaultOrder{FaultKind::NextWrite, 2, 1});
    EXPECT_TRUE(send(handle));
    EXPECT_FALSE(send(handle));
    EXPECT_FALSE(send(handle));
    EXPECT_TRUE(send(handle));
    EXPECT_EQ(state("door").exchanges, 4);
}

TEST_F(SceneWorld, FailsOpensUntilNothingGoesWrongAnyMore) {
    World& world = put();
    world.perform("door", FaultOrder{FaultKind::Open});
    EXPECT_EQ(usbBus().open(0), nullptr);
    world.perform("door", FaultOrder{FaultKind::None});
    EXPECT_NE(usbBus().open(0), nullptr);
}

TEST_F(SceneWorld, EndsFaultsOfTheLineAndOfItsDeviceAtOnce) {
    World& world = put();
    world.perform("till", FaultOrder{FaultKind::Dribble});
    EXPECT_TRUE(world.dribbles());
    world.perform("till", FaultOrder{FaultKind::Open});
    world.perform("till", FaultOrder{FaultKind::None});
    EXPECT_FALSE(world.dribbles());
    EXPECT_EQ(lines().whyNotOpen("/dev/ttySIM1"), 0);
}

TEST_F(SceneWorld, RefusesAFaultThatADeviceHasNot) {
    put();
    EXPECT_EQ(refusal("gate", FaultOrder{FaultKind::Reset}),
              "gate has no fault reset at usb; write one of none, open, next-write, next-read, "
              "no-answer, short-answer, wrong-byte, all-ones, garbage");
    EXPECT_EQ(refusal("till", FaultOrder{FaultKind::NextWrite}),
              "till has no fault next-write at /dev/ttySIM1; write one of none, open, silence, "
              "dribble, hang-up, no-answer, short-answer, wrong-byte, garbage");
}

TEST_F(SceneWorld, HidesAnUnpluggedDevice) {
    World& world = put();
    world.perform("door", Unplug{});
    EXPECT_FALSE(state("door").isPlugged);
    EXPECT_EQ(usbBus().presentPorts(), (std::vector<std::size_t>{1}));
    world.perform("door", Plug{});
    EXPECT_TRUE(state("door").isPlugged);
    EXPECT_EQ(usbBus().presentPorts().size(), 2U);
}

TEST_F(SceneWorld, TellsWhatASensorAndAStripeReaderHave) {
    World& world = put();
    world.perform("", Approach{20});
    world.perform("", Swipe{std::get<BandCard>(findStripe(world.cards(), "stripe"))});
    EXPECT_EQ(state("gate").inches, 20);
    const std::pair<std::string, std::string> led = {"0", "green"};
    EXPECT_EQ(state("till").leds[0], led);
}

TEST_F(SceneWorld, TellsTheRelayAndTheLeds) {
    put();
    void* const handle = usbBus().open(0);
    const unsigned char command[8] = {0x82};
    const unsigned char data[8] = {0x05}; // red LED and relay
    usbBus().backend().setFeature(handle, 0, command, sizeof command);
    usbBus().backend().setFeature(handle, 0, data, sizeof data);
    EXPECT_EQ(state("door").relay, true);
    const std::pair<std::string, std::string> red = {"red", "on"};
    EXPECT_EQ(state("door").leds[0], red);
}

TEST_F(SceneWorld, GivesItsTraceOnce) {
    World& world = put();
    send(usbBus().open(0));
    EXPECT_EQ(world.takeTrace(), "open sim:door\n0> 8F 00 00 00 00 00 00 00  identifier\n");
    EXPECT_EQ(world.takeTrace(), "");
}

TEST_F(SceneWorld, PutsABridgeBeforeItsFirstProximityReader) {
    World& world = put();
    EXPECT_EQ(world.bridge(), nullptr);
    ASSERT_NE(world.demandBridge(), nullptr);
    EXPECT_FALSE(world.failBridge({FaultKind::WrongStatus})) << "a fault of the reader's stream";
}

TEST_F(SceneWorld, OfTheDemonstrationHasItsReader) {
    world_ = World::demo();
    EXPECT_EQ(usbBus().identity(0).name, "sim:zeltag-0");
    EXPECT_EQ(state("zeltag-0").kind, "zelTag");
}

} // namespace

} // namespace zel::test
