// The designs of the folder examples/: a small headphone amplifier, its schematic and project, a library of connectors,
// and the technology that its boards have in common. They are made here and nowhere else; techsheet-examples writes
// them.
#pragma once
#include <memory>
#include <span>

#include "model/design/design.h"

struct SExampleDesign {
  const char* file;
  std::unique_ptr<CTechnology> (*make)();
};
std::span<const SExampleDesign> ExampleDesigns();
