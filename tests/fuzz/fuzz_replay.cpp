// The driver of the fuzzers where libFuzzer is not at hand (a GCC build): it runs every
// file and folder of files named on the command line through the fuzzer's entry, and then,
// for -max_total_time=N seconds, inputs made from them by random changes of bytes, of
// 32-bit words to telling values, and of the length. Same flags and exit as libFuzzer for
// what the tests use; other flags are ignored.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "Fuzz_Support.h"

namespace {

using Bytes = std::vector<unsigned char>;

// The input in hand, written to "crash-input" if the run is stopped on it.
const Bytes* current = nullptr;

extern "C" void Keep_Input(int sig) {
    const int fd = ::open("crash-input", O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd >= 0 && current != nullptr) {
        (void)!::write(fd, current->data(), current->size());
        ::close(fd);
    }
    std::signal(sig, SIG_DFL);
    std::raise(sig);
}

void Run(const Bytes& b) {
    current = &b;
    LLVMFuzzerTestOneInput(b.data(), b.size());
}

Bytes Read(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Mutate(Bytes& b, std::mt19937& rng) {
    static const uint32_t kWords[] = {0,          1,          0x7FFFFFFF, 0x80000000, 0xFFFFFFFF,
                                      0x7F800000, 0xFF800000, 0x7FC00000, 0x00000001, 0x02000000};
    const int changes = 1 + static_cast<int>(rng() % 4);
    for (int k = 0; k < changes; ++k) {
        const std::size_t at = b.empty() ? 0 : rng() % b.size();
        switch (rng() % 4) {
            case 0:
                if (!b.empty()) b[at] ^= static_cast<unsigned char>(1u << (rng() % 8));
                break;
            case 1:
                if (!b.empty()) b[at] = static_cast<unsigned char>(rng());
                break;
            case 2:
                if (b.size() >= 4) {
                    const uint32_t w = kWords[rng() % std::size(kWords)];
                    std::memcpy(b.data() + std::min(at, b.size() - 4), &w, 4);
                }
                break;
            default:
                b.resize(rng() % 2 ? at : b.size() + rng() % 64, static_cast<unsigned char>(rng()));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    LLVMFuzzerInitialize(&argc, &argv);
    for (int sig : {SIGABRT, SIGSEGV, SIGFPE, SIGBUS}) std::signal(sig, Keep_Input);
    double seconds = 0;
    std::vector<Bytes> inputs;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg.rfind("-max_total_time=", 0) == 0) seconds = std::stod(arg.substr(16));
        if (arg[0] == '-') continue;
        if (std::filesystem::is_directory(arg)) {
            for (const auto& e : std::filesystem::directory_iterator(arg))
                if (e.is_regular_file()) inputs.push_back(Read(e.path()));
        } else {
            inputs.push_back(Read(arg));
        }
    }
    long runs = 0;
    for (const Bytes& b : inputs) {
        Run(b);
        ++runs;
    }
    std::mt19937 rng(12345);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!inputs.empty() && std::chrono::steady_clock::now() < end) {
        Bytes b = inputs[rng() % inputs.size()];
        Mutate(b, rng);
        Run(b);
        ++runs;
    }
    std::printf("stat::number_of_executed_units: %ld\n", runs);
    return 0;
}
