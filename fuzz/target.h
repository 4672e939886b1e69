// The interface of a fuzz target, which decodes any bytes as one small scene, runs it and checks
// the outcome. The same source becomes a libFuzzer program (fuzzer.cpp) or a test that replays the
// committed inputs (replay.cpp). A finding ends the program: see expect.h.
#pragma once

#include <cstdint>
#include <span>

namespace fuzz {

/// Called once, before all inputs, with the program's path.
void prepare(const char *program);

/// Runs one input. Every call starts from the same state, so the input alone reproduces a finding.
void execute(std::span<const std::uint8_t> input);

} // namespace fuzz
