// The target as a test in ordinary builds: replays every file of the given folders, each as a
// separate test. A folder without files is a failure, because it would test nothing.
#include "fuzz/target.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

namespace files = std::filesystem;

class replayed : public testing::Test
{
public:
    explicit replayed(files::path file) : file_(std::move(file)) {}

    void TestBody() override
    {
        std::ifstream stream{file_, std::ios::binary};
        ASSERT_TRUE(stream) << file_;
        const std::vector<char> input{std::istreambuf_iterator<char>{stream}, {}};
        fuzz::execute({reinterpret_cast<const std::uint8_t *>(input.data()), input.size()});
    }

private:
    files::path file_;
};

std::vector<files::path> files_in(const files::path &folder)
{
    std::vector<files::path> found;
    for (const auto &entry : files::directory_iterator{folder})
        found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

int main(int count, char *words[])
{
    testing::InitGoogleTest(&count, words);
    fuzz::prepare(words[0]);
    for (int number = 1; number < count; ++number) {
        const auto inputs = files_in(words[number]);
        if (inputs.empty()) {
            std::fprintf(stderr, "%s holds no inputs\n", words[number]);
            return 1;
        }
        const std::string suite = files::path{words[number]}.parent_path().filename().string();
        for (const auto &file : inputs)
            testing::RegisterTest(suite.c_str(), file.filename().c_str(), nullptr, nullptr,
                                  __FILE__, __LINE__,
                                  [file]() -> testing::Test * { return new replayed{file}; });
    }
    return RUN_ALL_TESTS();
}
