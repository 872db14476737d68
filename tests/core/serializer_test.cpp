#include "core/serializer.h"

#include <cmath>
#include <filesystem>
#include <limits>
#include <thread>

#include "core/file_cache.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/world_fixture.h"

namespace {

class SerializerTest : public WorldFixture {
 protected:
  // Opens a document that holds these lines.
  void Read(const std::string& lines) {
    document_ = "{\n" + lines;
    EXPECT_TRUE(reader.OpenText("doc", document_));
  }

  Serializer reader;
  Serializer writer;

 private:
  std::string document_;
};

using FileCacheTest = WorldFixture;

// Blocks and composites are those of the shipped levels, which come back line for line.
TEST_F(SerializerTest, WritesNumbersInSixDigitsAndTextsInOneLine) {
  ASSERT_TRUE(writer.OpenForWrite("out"));
  for (const float number : {0.0085f, 1e-7f, 1234567.0f, std::sqrt(0.997f), -2.0f}) writer.WriteFloat("x", number);
  writer.WriteInt("n", -17);
  for (const char* text : {"a: b", "", "{inner} {ok} }"}) writer.WriteString("Name", text);
  EXPECT_EQ(world.text(), "");
  writer.WriteString("a", "two\nlines\r{{");  // would break its line
  ASSERT_TRUE(writer.Close());
  EXPECT_EQ(world.ReadFile("out"),
            "{\n\tx: 0.0085\n\tx: 1e-07\n\tx: 1.23457e+06\n\tx: 0.998499\n\tx: -2\n\tn: -17\n"
            "\tName: a: b\n\tName: \n\tName: {inner} {ok} }\n\ta: twolines\n}\n");
  EXPECT_EQ(Count(world.text(), "\n"), 2) << "one a kind";
  EXPECT_FALSE(std::filesystem::exists("out.tmp"));
}

TEST_F(SerializerTest, NumbersAreReadAsPrefixesWithinTheirRange) {
  Read(
      "a: 1.5metres\na:   +2.5\na: -3e2x\na: none\na: \na: +-4\na: .5\n"
      "a: 12abc\na: +7\na: 99999999999\na: -99999999999\na: x\na: -5\na: 1000000\na: 3\n");
  for (const float expected : {1.5f, 2.5f, -300.0f, 0.0f, 0.0f, 0.0f, 0.5f}) EXPECT_EQ(reader.ReadFloat(), expected);
  for (const int expected : {12, 7, std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0})
    EXPECT_EQ(reader.ReadInt(), expected);
  EXPECT_EQ(reader.ReadCount(), 0) << "a negative count";
  EXPECT_LE(reader.ReadCount(), 5) << "no more than the text left can hold";
  EXPECT_EQ(world.text(), "");
}

TEST_F(SerializerTest, NotFiniteNumbersBecomeZeroWithAMessage) {
  Read("a: 1e-50\na: nan\na: -inf\na: 1e99\na: 2\n");
  for (const float expected : {0.0f, 0.0f, 0.0f, 0.0f, 2.0f}) EXPECT_EQ(reader.ReadFloat(), expected);
  EXPECT_EQ(Count(world.text(), "line 3: "), 1) << "a number that is too small is no fault";
  EXPECT_EQ(Count(world.text(), "\n"), 1) << "one message for a document";
  writer.OpenForWrite("out");
  writer.WriteFloat("x", std::numeric_limits<float>::quiet_NaN());
  writer.WriteFloat("y", -std::numeric_limits<float>::infinity());
  writer.Close();
  EXPECT_EQ(world.ReadFile("out"), "{\n\tx: 0\n\ty: 0\n}\n");
  EXPECT_EQ(Count(world.text(), "\n"), 2) << "one message for a document";
}

TEST_F(SerializerTest, EveryKindOfBadTextIsToldOnceASave) {
  writer.OpenForWrite("out");
  for (const char* text : {"a\tb", "brace{{", "c\nd{"}) writer.WriteString("key", text);
  writer.Close();
  EXPECT_EQ(world.ReadFile("out"), "{\n\tkey: ab\n\tkey: brace\n\tkey: cd\n}\n");
  EXPECT_EQ(Count(world.text(), "\n"), 2);
}

TEST_F(SerializerTest, LeavesStrippedAndForeignLinesHarmless) {
  Read("Name:\nno colon\n\n\t\r\n\tkey: windows\r\nb: True\nb: t\nb: yes\nb: true\n");
  EXPECT_EQ(reader.ReadString(), "");
  EXPECT_EQ(reader.ReadString(), "");
  EXPECT_EQ(reader.ReadString(), "windows") << "empty lines are passed, the carriage return is dropped";
  for (const bool expected : {true, true, false, true, false}) EXPECT_EQ(reader.ReadBool(), expected);
  EXPECT_TRUE(reader.HasMetEnd());
}

TEST_F(SerializerTest, TellsLinesApart) {
  Read("7: {\n\tComponent: \"a \"b\" c\" {\n{\nComponent: {\nkey: va: lue\n}\n");
  std::string_view key;
  std::string_view value;
  const auto expectNext = [&](LineKind kind, std::string_view expectedKey) {
    EXPECT_EQ(reader.ReadLine(key, value), kind);
    EXPECT_EQ(key, expectedKey);
  };
  expectNext(LineKind::kBlockOpen, "7");
  expectNext(LineKind::kComponentOpen, "a \"b\" c");
  expectNext(LineKind::kBlockOpen, "{");
  expectNext(LineKind::kComponentOpen, "");
  EXPECT_EQ(reader.GetDepth(), 5);
  expectNext(LineKind::kKeyValue, "key");
  EXPECT_EQ(value, "va: lue");
  EXPECT_EQ(reader.ReadLine(key, value), LineKind::kBlockClose);
  for (int i = 0; i < 2; ++i) EXPECT_EQ(reader.ReadLine(key, value), LineKind::kEndOfFile);

  Read("Component: \"Vec3\" {\n}\na: 5\n");
  EXPECT_EQ(reader.ReadFloat(), 0.0f) << "a value that is missing costs the line in its place";
  EXPECT_EQ(reader.ReadInt(), 0);
  EXPECT_EQ(reader.ReadInt(), 5);
}

// A reader may see many characters at once, across a line's end and up to the text's.
TEST_F(SerializerTest, LinesOfEveryLengthAndIndentationAreReadAlike) {
  for (std::size_t tabs : {0u, 1u, 7u, 31u, 40u})
    for (std::size_t length = 1; length < 70; ++length)
      for (const char* end : {"", "\n", "\r\n", "\n: :\n\tx: y"}) {
        const std::string key(length, 'k');
        Read(std::string(tabs, '\t') + key + "\n" + std::string(tabs, '\t') + key + ": a:b" + end);
        std::string_view readKey;
        std::string_view value;
        EXPECT_EQ(reader.ReadLine(readKey, value), LineKind::kKeyValue);
        EXPECT_EQ(readKey, key);
        EXPECT_EQ(value, "") << "the colon is another line's";
        EXPECT_EQ(reader.ReadLine(readKey, value), LineKind::kKeyValue);
        EXPECT_EQ(readKey, key);
        EXPECT_EQ(value, "a:b");
      }
}

TEST_F(SerializerTest, AFailedSaveKeepsTheOldFile) {
  EXPECT_FALSE(writer.OpenForWrite("no/such/folder/out"));
  writer.WriteInt("a", 1);
  EXPECT_FALSE(writer.Close());

  std::filesystem::create_directory("taken");
  world.WriteFile("taken/inside", "x");
  ASSERT_TRUE(writer.OpenForWrite("taken"));
  EXPECT_FALSE(writer.Close()) << "a folder cannot be replaced";
  EXPECT_EQ(world.ReadFile("taken/inside"), "x");
  EXPECT_FALSE(std::filesystem::exists("taken.tmp"));
  EXPECT_NE(world.text().find("taken"), std::string::npos);
}

// The thread that loads sounds prints too, while the editor listens to what its own actions say.
TEST_F(SerializerTest, AListenerHearsItsOwnThreadAlone) {
  static int heard;
  heard = 0;
  SetPrintListener([](std::string_view) { ++heard; });
  std::thread([] { Print("elsewhere\n"); }).join();
  Print("here\n");
  SetPrintListener(nullptr);
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(world.text(), "elsewhere\nhere\n");
}

TEST_F(FileCacheTest, ReadsAFileOnceAndKeepsWhatItRead) {
  world.WriteFile("a", "first");
  const std::string* text = ReadCachedFile("a");
  world.WriteFile("a", "second");
  for (int i = 0; i < 200; ++i) {
    world.WriteFile("other" + std::to_string(i), "x");
    ReadCachedFile("other" + std::to_string(i));
  }
  EXPECT_EQ(ReadCachedFile("a"), text);
  EXPECT_EQ(*text, "first");
  EXPECT_EQ(ReadCachedFile("missing"), nullptr);
  world.WriteFile("missing", "came later");
  EXPECT_NE(ReadCachedFile("missing"), nullptr) << "a failure is not kept";
}

TEST_F(FileCacheTest, RefusesFoldersAndHugeFiles) {
  std::filesystem::create_directory("folder");
  EXPECT_EQ(ReadCachedFile("folder"), nullptr);
  world.WriteFile("huge", "{\n");
  std::filesystem::resize_file("huge", static_cast<std::uintmax_t>(kMaxFileBytes) + 1);
  EXPECT_EQ(ReadCachedFile("huge"), nullptr);
  EXPECT_NE(world.text().find("huge: larger"), std::string::npos);
  std::filesystem::resize_file("huge", static_cast<std::uintmax_t>(kMaxFileBytes));
  EXPECT_NE(ReadCachedFile("huge"), nullptr);

  world.WriteFile("nothing", "");
  for (const char* name : {"folder", "nothing", "nowhere"}) {
    world.ClearText();
    EXPECT_TRUE(Objects().LoadLevel(name).empty());
    EXPECT_EQ(world.text(), "CAN'T FIND YO LEVEL, YA DON GOOFED!\n");
  }
}

}  // namespace
