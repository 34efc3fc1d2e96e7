#pragma once
// The names of the collision bits, from "CollisionBitsWorld.txt" in the plug-in's data folder:
// one "number: name" line per bit, "//" starting a comment.

#include <string>
#include <string_view>
#include <vector>

inline constexpr std::string_view kCollisionBitNamesFile = "CollisionBitsWorld.txt";

// One name per bit shown, bit 0 first: up to the highest bit a line names; bits no line names
// are shown with empty names. Lines without ':' and bit numbers outside 0..31 are ignored; the
// number is read as atoi reads it; a later line for the same bit replaces the name.
std::vector<std::string> ParseBitNames(std::string_view text);

// The file's names; when it cannot be read or names no bit, defaultCount bits named
// "Unknown (bit %i)".
std::vector<std::string> LoadBitNames(std::string_view path, int defaultCount);
