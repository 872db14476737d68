// The hidden object "AForceBox" that owns every force generator, and the numbers by which files link bodies to them.
// Each load has a table of its own, so a level read inside another one cannot take the outer one's generators.
#pragma once

#include <memory>

#include "core/object_manager.h"
#include "core/script_registry.h"
#include "physics/force_generator.h"

namespace GalePhysics {

/// The host's name, which its copies in files bear too.
inline constexpr char kGeneratorHostName[] = "AForceBox";

/// The host object; made on first use, in no object list, ID 1337.
GameObject& GetGeneratorHost();

/// Hands a new generator to the host, which keeps it to the end of the run. Returns it.
template <class T>
T& AdoptGenerator(std::unique_ptr<T> generator);
ForceGenerator& AdoptForceGenerator(std::unique_ptr<ForceGenerator> generator);
/// Takes a generator back from the host, which nobody may list any more; null when the host has it not.
std::unique_ptr<ForceGenerator> TakeForceGenerator(ForceGenerator& generator);

template <class T>
T& AdoptGenerator(std::unique_ptr<T> generator) {
  T& adopted = *generator;
  AdoptForceGenerator(std::move(generator));
  return adopted;
}

/// Registry creator of a generator class: owned by the host, lent to the caller.
template <class T>
NewScript CreateHosted() {
  return {nullptr, &AdoptGenerator(std::make_unique<T>())};
}

/// The ID that this save gave the generator; 0 when it has not been written.
int SavedGeneratorId(const ForceGenerator& generator);
/// The generator that the present load read under this ID, or null.
ForceGenerator* LoadedGenerator(int id);

/// Keeps the ID tables in step with the loads and saves of the object manager.
LevelExtension& GetGeneratorLinks();

/// How many generators the host keeps.
std::size_t CountGenerators();

/// Destroys the host with all generators.
void ResetGeneratorHost();

}  // namespace GalePhysics
