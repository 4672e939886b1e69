// What a fuzz target is: a program that reads any bytes as one small scene and checks what comes of
// it. The same source becomes a libFuzzer program (fuzzer.cpp) or a test that replays the committed
// inputs (replay.cpp). A breach of what a target expects ends the program: see expect.h.
#pragma once

#include <cstdint>
#include <span>

namespace fuzz {

/// Called once, before all inputs.
void prepare(const char *program);

/// One input. Every call starts from the same state, so that an input says all there is to know.
void execute(std::span<const std::uint8_t> input);

} // namespace fuzz
