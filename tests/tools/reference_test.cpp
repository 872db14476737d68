// The words on the blocks of a level file stand beside the key table, which is tested against what the game writes.
#include <gtest/gtest.h>

#include <map>

#include "tools/lint/descriptions.h"
#include "tools/lint/key_table.h"

namespace {

// Every line of a block is told of once, in order, and values without a key have a name.
void ExpectFits(const BlockText& text, const BlockSchema& schema) {
  EXPECT_FALSE(text.meaning.empty()) << text.name;
  std::size_t at = 0;
  for (const FieldText& field : text.fields) {
    ASSERT_LE(at + static_cast<std::size_t>(field.lines), schema.fields.size()) << text.name << ": too many";
    EXPECT_EQ(field.name.empty(), !schema.fields[at].key.empty()) << text.name << ", value " << at + 1;
    EXPECT_FALSE(field.meaning.empty()) << text.name << ", value " << at + 1;
    at += static_cast<std::size_t>(field.lines);
  }
  EXPECT_EQ(at, schema.fields.size()) << text.name;
}

void ExpectComplete(std::span<const BlockText> texts, std::span<const BlockSchema> schemas) {
  std::map<std::string_view, const BlockText*> byName;
  for (const BlockText& text : texts) EXPECT_TRUE(byName.emplace(text.name, &text).second) << text.name << " twice";
  EXPECT_EQ(texts.size(), schemas.size());
  for (const BlockSchema& schema : schemas) {
    ASSERT_TRUE(byName.contains(schema.name)) << schema.name << " is not described";
    ExpectFits(*byName[schema.name], schema);
  }
}

}  // namespace

TEST(Reference, DescribesEveryLineOfEveryBlock) {
  ExpectComplete(ComponentTexts(), ComponentSchemas());
  ExpectComplete(ScriptTexts(), ScriptSchemas());
  ExpectComplete(ObjectiveTexts(), ObjectiveSchemas());
}
