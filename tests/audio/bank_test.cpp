// Banks that are whole, and banks that are anything else.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "audio/studio/bank_file.h"
#include "audio/studio/sound_reader.h"
#include "audio/test_sounds.h"
#include "test_world.h"

using Studio::BankContent;
using Studio::Result;
using Bytes = std::vector<std::uint8_t>;

namespace {

Result Parse(const Bytes& bytes, std::string* why = nullptr) {
  BankContent content;
  std::string text;
  const Result result = Studio::ParseBank(bytes, content, text);
  EXPECT_EQ(result == Result::kOk, text.empty());
  EXPECT_TRUE(result == Result::kOk || (content.events.empty() && content.paths.empty()));
  if (why != nullptr) *why = text;
  return result;
}

template <class T>
Bytes With(Bytes bytes, std::size_t at, T value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
  return bytes;
}

const std::vector<Studio::BankSource>& Sources() {
  static const std::vector<Studio::BankSource> sources = {MakeSource("event:/SFX/Menu/Scroll", 0.5f, 0.1f),
                                                          MakeSource("event:/Music/Tune", 0.5f, 0.2f)};
  return sources;
}

// The checksum of an Ogg page: polynomial 0x04c11db7, nothing inverted.
std::uint32_t OggChecksum(const Bytes& page) {
  std::uint32_t sum = 0;
  for (const std::uint8_t byte : page) {
    sum ^= static_cast<std::uint32_t>(byte) << 24;
    for (int bit = 0; bit < 8; ++bit) sum = sum << 1 ^ (sum >> 31 ? 0x04c11db7u : 0u);
  }
  return sum;
}

// The stream whose last page claims to end at another frame, with a good checksum.
Bytes WithClaimedLength(const Bytes& ogg, std::uint64_t frames) {
  constexpr std::size_t kPosition = 6;
  constexpr std::size_t kChecksum = 22;
  constexpr std::string_view kPage = "OggS";
  const auto last = std::find_end(ogg.begin(), ogg.end(), kPage.begin(), kPage.end());
  Bytes page = With(With(Bytes(last, ogg.end()), kPosition, frames), kChecksum, std::uint32_t{0});
  page = With(page, kChecksum, OggChecksum(page));
  Bytes claimed(ogg.begin(), last);
  claimed.insert(claimed.end(), page.begin(), page.end());
  return claimed;
}

}  // namespace

TEST(StudioBank, ABankThatIsCutAnywhereIsRefused) {
  for (const Bytes& whole : {Studio::WriteEventBank(Sources()), Studio::WriteStringsBank(Sources())})
    for (std::size_t size = 0; size < whole.size(); ++size)
      ASSERT_NE(Parse(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))), Result::kOk) << size;
}

TEST(StudioBank, LiesInTheTablesAreFound) {
  const Bytes events = Studio::WriteEventBank(Sources());
  const Bytes strings = Studio::WriteStringsBank(Sources());
  std::string why;
  EXPECT_EQ(Parse(With(events, 8, std::uint32_t{2}), &why), Result::kBankVersion);
  EXPECT_EQ(why, "is of version 2, not 1");
  EXPECT_EQ(Parse(With(events, 0, 'b')), Result::kNotABank);
  for (const Bytes& lie :
       {With(events, 12, std::uint32_t{3}), With(events, 24, std::uint32_t{257}), With(events, 24, 0xffffffffu),
        With(events, 32 + 8, std::uint32_t{2}), With(events, 32 + 16, std::uint64_t{0}),
        With(events, 32 + 16, ~std::uint64_t{0}), With(events, 32 + 24, ~std::uint64_t{0}),
        With(events, 32 + 24, std::uint64_t{0}), With(events, 64, Studio::EventNumber(Sources()[0].path)),
        With(strings, 32 + 8, ~std::uint32_t{0}), With(strings, 32 + 12, ~std::uint32_t{0}),
        With(strings, strings.size() - 1, ' '), With(strings, 32 + 12, std::uint32_t{6})})
    EXPECT_EQ(Parse(lie), Result::kBankDamaged);
}

TEST(StudioBank, RandomBytesInAGoodBankDoNoHarm) {
  std::mt19937 random(1);
  const Bytes whole = Studio::WriteEventBank(Sources());
  for (int round = 0; round < 300; ++round) {
    Bytes bitten = whole;
    for (int bites = 0; bites < 4; ++bites) bitten[random() % bitten.size()] = static_cast<std::uint8_t>(random());
    BankContent content;
    std::string why;
    if (Studio::ParseBank(bitten, content, why) != Result::kOk) continue;
    for (const Studio::BankEvent& event : content.events) {
      Studio::Samples samples;
      Studio::DecodeAll(event.sound, samples);
      EXPECT_LE(samples.GetFrames(), 48000u);
    }
  }
}

// What is decoded is what is there: neither a stream that claims five hundred years nor one that is cut gives more.
TEST(StudioBank, AStreamThatLiesAboutItsLengthGivesWhatItHas) {
  const Bytes ogg = MakeOgg(0.5f, 0.5f);
  Studio::Samples samples;
  ASSERT_EQ(Studio::DecodeAll(ogg, samples), Result::kOk);
  EXPECT_EQ(samples.GetFrames(), 24000u);
  EXPECT_NEAR(PeakOf(samples.stereo), 0.5f, 0.05f);
  // The library believes a claim of a stream of several pages: what is too long is refused before it is decoded.
  EXPECT_EQ(Studio::DecodeAll(WithClaimedLength(MakeOgg(0.5f, 4.0f), 30000000), samples), Result::kSoundTooLong);
  for (const std::uint64_t claim : {std::uint64_t{1} << 60, ~std::uint64_t{0}, std::uint64_t{1}}) {
    Studio::DecodeAll(WithClaimedLength(ogg, claim), samples);
    EXPECT_LE(samples.GetFrames(), 24000u + 4096u) << claim;
  }
  for (std::size_t size = 0; size < ogg.size(); size += 97) {
    Studio::Samples cut;
    const Result result = Studio::DecodeAll(std::span(ogg).first(size), cut);
    EXPECT_TRUE(result == Result::kOk || cut.stereo.empty());
    EXPECT_LE(cut.GetFrames(), 24000u);
  }
}

TEST(StudioBank, ASystemWithoutAGoodBankHasNoEvents) {
  TestWorld world;
  Studio::System system;
  Studio::Bank bank;
  Studio::EventDescription event;
  std::string why;
  EXPECT_EQ(system.LoadBankFile("none.bank", bank, why), Result::kFileNotFound);
  EXPECT_EQ(system.LoadBankFile(".", bank, why), Result::kFileNotFound);
  EXPECT_FALSE(why.empty());
  world.WriteFile("text.bank", "event:/SFX/Menu/Scroll");
  EXPECT_EQ(system.LoadBankFile("text.bank", bank, why), Result::kNotABank);
  ASSERT_EQ(system.LoadBankMemory(Studio::WriteStringsBank(Sources()), bank, why), Result::kOk);
  EXPECT_EQ(system.GetEvent(Sources()[0].path, event), Result::kEventNotFound);
  ASSERT_EQ(system.LoadBankMemory(Studio::WriteEventBank(Sources()), bank, why), Result::kOk);
  EXPECT_EQ(system.GetEvent(Sources()[0].path, event), Result::kOk);
  EXPECT_EQ(system.LoadBankMemory(Studio::WriteEventBank(Sources()), bank, why), Result::kBankLoaded);
  EXPECT_EQ(system.GetEvent("event:/SFX/Menu/Other", event), Result::kEventNotFound);

  const std::vector<Studio::BankSource> damaged = {{"event:/SFX/Noise", Studio::Category::kEffects, Bytes(100, 'O')}};
  ASSERT_EQ(system.LoadBankMemory(Studio::WriteEventBank(damaged), bank, why), Result::kOk);
  ASSERT_EQ(system.LoadBankMemory(Studio::WriteStringsBank(damaged), bank, why), Result::kOk);
  ASSERT_EQ(system.GetEvent("event:/SFX/Noise", event), Result::kOk);
  Studio::EventInstance instance;
  for (int again = 0; again < 2; ++again)
    EXPECT_EQ(system.CreateInstance(event, Studio::VoiceUse::kWhenFree, instance), Result::kSoundDamaged);
  EXPECT_EQ(system.Start(instance), Result::kInvalidHandle);
}
