// The target as a libFuzzer program.
#include "fuzz/target.h"

#include <cstddef>

extern "C" int LLVMFuzzerInitialize(int *, char ***words)
{
    fuzz::prepare((*words)[0]);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::execute({data, size});
    return 0;
}
