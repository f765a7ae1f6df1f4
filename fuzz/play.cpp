// play FOLDER: a fuzzer where there is no libFuzzer: plays every file of the corpus, then changes of them for
// ORVEN_FUZZ_SECONDS, 2 where that isn't set. What it plays is chosen by ORVEN_SEED, which is told. A find stands in
// the file "find" of the working folder, which plays it again as an argument.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "fuzz/fuzz.h"

namespace {

using Bytes = std::string;
constexpr std::size_t kLongest = 4096;
constexpr int kPlaysPerLook = 64;

const Bytes* playing = nullptr;

extern "C" void keepFind(int signal) {
    const int file = ::open("find", O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (file >= 0 && ::write(file, playing->data(), playing->size()) < 0) ::close(file);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void play(const Bytes& bytes) {
    playing = &bytes;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

std::vector<Bytes> corpusOf(const std::filesystem::path& path) {
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_regular_file(path)) files.push_back(path);
    if (std::filesystem::is_directory(path)) {
        for (const auto& entry : std::filesystem::directory_iterator(path))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<Bytes> all;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        all.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return all;
}

class Changer {
public:
    Changer(const std::vector<Bytes>& corpus, unsigned seed) : corpus_(corpus), random_(seed) {}

    Bytes next() {
        Bytes bytes = any();
        for (std::size_t changes = 1 + below(4); changes > 0; --changes)
            change(bytes);
        bytes.resize(std::min(bytes.size(), kLongest));
        return bytes;
    }

private:
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
    const Bytes& any() { return corpus_[below(corpus_.size())]; }

    void change(Bytes& bytes) {
        const std::size_t at = below(bytes.size() + 1);
        const std::size_t size = below(bytes.size() - at + 1);
        switch (below(5)) {
            case 0:
                bytes.erase(at, size);
                break;
            case 1:
                bytes.insert(at, 1, static_cast<char>(below(256)));
                break;
            case 2:
                if (at < bytes.size()) bytes[at] = static_cast<char>(below(256));
                break;
            case 3:
                bytes.insert(at, bytes.substr(at, size));
                break;
            default: {
                const Bytes& other = any();
                const std::size_t from = below(other.size() + 1);
                bytes.insert(at, other.substr(from, below(other.size() - from + 1)));
            }
        }
    }

    const std::vector<Bytes>& corpus_;
    std::mt19937 random_;
};

unsigned numberOf(const char* variable, unsigned fallback) {
    const char* text = std::getenv(variable);
    return text == nullptr ? fallback : static_cast<unsigned>(std::stoul(text));
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGALRM})
        std::signal(signal, keepFind);
    const std::vector<Bytes> corpus = corpusOf(arguments[1]);
    if (corpus.empty()) return 2;
    for (const Bytes& bytes : corpus)
        play(bytes);
    if (std::filesystem::is_regular_file(arguments[1])) return 0;
    const unsigned seed = numberOf("ORVEN_SEED", std::random_device()());
    std::cout << "ORVEN_SEED=" << seed << " runs this again" << std::endl;
    Changer changer(corpus, seed);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(numberOf("ORVEN_FUZZ_SECONDS", 2));
    long played = 0;
    do {
        for (int i = 0; i < kPlaysPerLook; ++i, ++played) {
            const Bytes bytes = changer.next();
            ::alarm(20);  // one that doesn't come back is a find too
            play(bytes);
        }
    } while (std::chrono::steady_clock::now() < end);
    std::cout << played << " plays" << std::endl;
    return 0;
}
