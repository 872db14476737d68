#include "tools/bank/bank_tool.h"

#include <gtest/gtest.h>

#include "audio/studio/bank_file.h"
#include "audio/test_sounds.h"
#include "test_world.h"
#include "tools/bank/bank_spec.h"
#include "tools/printed.h"

namespace {

std::string Text(const std::vector<std::uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

std::vector<std::string> FaultsOf(std::string_view text) {
  std::vector<std::string> faults;
  ParseBankSpec(text, faults);
  return faults;
}

}  // namespace

TEST(BankTool, BuildsListsAndExtracts) {
  TestWorld world;
  std::filesystem::create_directories("sounds/Squid");
  world.WriteFile("sounds/Squid/Charge.ogg", Text(MakeOgg(0.5f, 0.25f)));
  world.WriteFile("sounds/Tune.ogg", Text(MakeOgg(0.5f, 0.5f, 2)));
  world.WriteFile(
      "spec.txt",
      "# two events\nevent:/SFX/Squid/Charge sfx Squid/Charge.ogg\n\nevent:/Music/Tune music Tune.ogg # loops\n");
  ASSERT_EQ(BuildBank("spec.txt", "Master Bank.bank", "sounds"), 0);
  const std::string first = world.ReadFile("Master Bank.bank");
  ASSERT_EQ(BuildBank("spec.txt", "Master Bank.bank", "sounds"), 0);
  EXPECT_EQ(world.ReadFile("Master Bank.bank"), first);

  const std::string text = Printed([](std::FILE* out) { EXPECT_EQ(ListBank("Master Bank.bank", out), 0); });
  EXPECT_EQ(text.rfind("event:/SFX/Squid/Charge sfx 0.250 s 48000 Hz mono ", 0), 0u) << text;
  EXPECT_EQ(Count(text, "\nevent:/Music/Tune music 0.500 s 48000 Hz stereo "), 1) << text;

  EXPECT_EQ(ExtractFromBank("Master Bank.bank", "event:/Music/Tune", "tune.wav"), 0);
  EXPECT_EQ(world.ReadFile("tune.wav").size(), 44u + 24000u * 4u);
  EXPECT_EQ(ExtractFromBank("Master Bank.bank", "event:/SFX/Squid/Charge", "charge.wav"), 0);
  EXPECT_EQ(world.ReadFile("charge.wav").size(), 44u + 12000u * 2u);
  EXPECT_EQ(ExtractFromBank("Master Bank.bank", "event:/SFX/Squid", "none.wav"), 1);
  EXPECT_EQ(ExtractFromBank("spec.txt", "event:/SFX/Squid/Charge", "none.wav"), 1);
}

TEST(BankTool, AFaultLeavesTheOldBankAlone) {
  TestWorld world;
  world.WriteFile("old.bank", "old");
  world.WriteFile("text.ogg", "no sound");
  world.WriteFile("spec.txt", "event:/SFX/A sfx text.ogg\nevent:/SFX/B sfx missing.ogg\n");
  EXPECT_EQ(BuildBank("spec.txt", "old.bank", ""), 1);
  EXPECT_EQ(BuildBank("missing.txt", "old.bank", ""), 1);
  EXPECT_EQ(world.ReadFile("old.bank"), "old");
  EXPECT_EQ(ListBank("old.bank", stderr), 1);
}

TEST(BankTool, TheListSaysWhatIsWrongWithABank) {
  TestWorld world;
  using Sources = std::vector<Studio::BankSource>;
  const auto faultOf = [&](const std::string& events, const Sources& paths) {
    world.WriteFile("a.bank", events);
    world.WriteFile("a.strings.bank", Text(Studio::WriteStringsBank(paths)));
    testing::internal::CaptureStderr();
    EXPECT_EQ(ListBank("a.bank", stdout), 1);
    return testing::internal::GetCapturedStderr();
  };
  const auto bank = [](const Sources& events) { return Text(Studio::WriteEventBank(events)); };
  const Studio::BankSource good = {"event:/SFX/Good", Studio::Category::kEffects, MakeOgg(0.5f, 0.1f)};
  const Studio::BankSource noise = {"event:/SFX/Noise", Studio::Category::kEffects, {1, 2, 3}};
  EXPECT_EQ(faultOf(bank({good, noise}), {good}), "a.bank: entry 2: a.strings.bank has no path for it\n");
  EXPECT_EQ(faultOf(bank({good}), {good, noise}), "a.bank: event:/SFX/Noise: the bank has no sound for it\n");
  EXPECT_EQ(faultOf(bank({noise}), {noise}),
            std::string("a.bank: event:/SFX/Noise: ") + Studio::ResultText(Studio::Result::kSoundDamaged) + "\n");
  const std::string cut = faultOf(bank({good}).substr(0, 100), {good});
  EXPECT_EQ(cut.rfind("a.bank: has 100 bytes, its header says ", 0), 0u) << cut;
}

TEST(BankSpec, FaultsAreNamedWithTheirLines) {
  EXPECT_TRUE(FaultsOf("event:/SFX/A sfx a.ogg\n\n# none\nevent:/SFX/B sfx a.ogg\r\n").empty());
  EXPECT_EQ(FaultsOf("# one\nevent:/SFX/A sfx\n"), std::vector<std::string>{"2: not EVENT KIND FILE"});
  for (const char* line : {"event:/SFX/A sfx a b", "SFX/A sfx a", "event:/SFX/A music a", "event:/Music/A sfx a",
                           "event:/SFX/A tune a", "event:/SFX/A sfx a\nevent:/SFX/A sfx b"})
    EXPECT_EQ(FaultsOf(line).size(), 1u) << line;
  std::string many;
  for (int i = 0; i < 257; ++i) many += "event:/SFX/" + std::to_string(i) + " sfx a\n";
  EXPECT_EQ(FaultsOf(many).size(), 1u);
}
