// What the three file fuzzers share: the program's state as a fresh run has it before
// each input, the sample files the program writes (the seeds of the fuzzers), and a check
// that stops the run on a broken promise.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

namespace kelmoran::fuzz {

// Stops the run with `what` when `ok` is false: the fuzzer keeps the input that did it.
inline void Require(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// Settings, filter, shell, plan and star tables as at the start of a run.
void Fresh_State();

// The files the program writes: named by what they hold, for the fuzzer `kind`
// ("user_dat", "voyage", "sights").
struct Seed {
    std::string Name;
    std::vector<unsigned char> Bytes;
};
std::vector<Seed> Seeds(const std::string& kind);

// The kind of the fuzzer linked with this support, defined by each fuzzer.
extern const char* const kKind;

}  // namespace kelmoran::fuzz

// The entries of a fuzzer (libFuzzer's names): each fuzzer defines the first, the support
// the second.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
