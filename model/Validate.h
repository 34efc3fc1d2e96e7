#pragma once
// Checks the invariants that the passes rely on: no empty slots, every corner a vertex of the
// same container, owner lists and vis-area lists mirroring each other, every material used
// belonging to the container, and every material's use count exact. Answers one line per
// problem found; empty when the container is sound.

#include <string>
#include <vector>

class VMModel;
class VMWorld;

std::vector<std::string> Validate(const VMWorld& world);
std::vector<std::string> Validate(const VMModel& model);
