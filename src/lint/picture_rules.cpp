#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

#include "core/data_place.h"
#include "core/file_name.h"
#include "graphics/mesh_type.h"
#include "graphics/particle_emitter.h"
#include "graphics/picture.h"
#include "graphics/picture_fault.h"
#include "graphics/preload_list.h"
#include "lint/level_rules.h"

namespace {

constexpr int kMostParticles = 1 << 20;  // in all emitters together
constexpr float kWide = 16.0f / 9.0f;
constexpr float kWideTolerance = 0.01f;
constexpr float kPartTolerance = 0.001f;
constexpr std::string_view kShaders[] = {"default", "debug", "fisheye", "underquay",
                                         "overhead"};  // those that draw sprites

constexpr char kReadWithLevel[] = "is read when the level is, which may stall a frame";

class PictureRules {
 public:
  explicit PictureRules(const LintContext& context)
      : context_(context), report_(context.report), isMatchLevel_(context.level.GetName() == kMatchLevel) {}

  void Run() {
    for (const LintObject& object : context_.level.objects) {
      if (const LintBlock* sprite = object.Find("Sprite")) CheckSprite(*sprite);
      for (const LintBlock& script : object.scripts) CheckEmitter(script);
    }
  }

 private:
  void CheckSprite(const LintBlock& sprite) {
    const LintLine* mesh = ValueOf(&sprite, "mesh type");
    if (mesh != nullptr && NumberOf(*mesh) == 2.0f)
      report_.Say(mesh->number, "mesh-type", "nothing is drawn: 0 picture, 1 circle, 3 whole screen");
    CheckPart(sprite, "row", "start frame");
    CheckPart(sprite, "columns", "end frame");
    const LintLine* shader = ValueOf(&sprite, "shader name");
    if (shader != nullptr && std::find(std::begin(kShaders), std::end(kShaders), shader->value) == std::end(kShaders))
      report_.Say(shader->number, "unknown-shader", "nothing is drawn: write default");
    const LintLine* picture = ValueOf(&sprite, "texture path");
    Picture image;
    if (picture == nullptr || !CheckPicture(*picture, image, "every start prints an error for it: name a picture",
                                            isMatchLevel_ ? nullptr : kReadWithLevel))
      return;
    if (mesh != nullptr && NumberOf(*mesh) == float{MeshType::kFullScreen} &&
        std::abs(static_cast<float>(image.width) / static_cast<float>(image.height) / kWide - 1.0f) > kWideTolerance)
      report_.Say(picture->number, "not-16-9", "over the whole screen it is stretched to 16:9");
  }

  void CheckPart(const LintBlock& sprite, const char* size, const char* start) {
    if (const LintLine* begin = ValueOf(&sprite, start);
        begin != nullptr && NumberOf(*begin) + NumberOf(&sprite, size) > 1.0f + kPartTolerance)
      report_.Say(begin->number, "outside-picture", "together with " + std::string(size) + " it is more than 1");
  }

  void CheckEmitter(const LintBlock& script) {
    const LintLine* picture = ValueOf(&script, "textureName");
    if (picture == nullptr) return;
    Picture image;
    CheckPicture(*picture, image, "its particles are black: name a picture",
                 "is not loaded by an emitter: its particles are black unless a sprite loads it");
    const float count = NumberOf(&script, "particleCount", 1.0f);
    if (count == 0.0f || NumberOf(&script, "maxLifeSpan", 1.0f) == 0.0f)
      report_.Say(script.line, "no-particles", "without particles or life it shows nothing");
    const bool tooMany = particles_ > kMostParticles;  // and told
    if (count > 0.0f && count <= float{ParticleEmitter::kMaxParticles} && !tooMany)
      particles_ += static_cast<int>(count);
    if (!tooMany && particles_ > kMostParticles)
      report_.Say(script.line, "too-many-particles", "all emitters together have at most 1048576");
  }

  // Without `whenNotPreloaded` it may be read at any time.
  bool CheckPicture(const LintLine& picture, Picture& image, const char* whenNone, const char* whenNotPreloaded) {
    const std::string name(picture.value);
    const std::string folder = context_.folder.PathOf("Texture");
    std::error_code error;
    if (name == "NULLSTRING" || name.empty()) {
      report_.Say(picture.number, "no-picture", whenNone);
    } else if (!IsPlainName(name)) {
      report_.Say(picture.number, "unsafe-name",
                  "\"" + name + "\" is not read: name a picture in Texture/ without folder");
    } else if (!std::filesystem::is_regular_file(FindData(folder + "/" + name), error)) {
      report_.Say(picture.number, "missing-picture",
                  "\"" + name + "\" is no picture in Texture/: name one that is there, without folder");
    } else if (!ReadPicture(folder, name, PictureUse::kCheck, image)) {
      report_.Say(picture.number, "bad-picture", "\"" + name + "\" " + PictureFault(folder, name));
    } else {
      if (whenNotPreloaded != nullptr &&
          std::find(kPreloadedImages.begin(), kPreloadedImages.end(), name) == kPreloadedImages.end() &&
          noted_.insert(picture.value).second)
        report_.Say(picture.number, "not-preloaded", "\"" + name + "\" " + whenNotPreloaded);
      return true;
    }
    return false;
  }

  const LintContext& context_;
  LintReport& report_;
  bool isMatchLevel_;
  std::set<std::string_view> noted_;  // pictures that have had their note
  int particles_ = 0;
};

}  // namespace

void CheckPictures(const LintContext& context) { PictureRules(context).Run(); }
