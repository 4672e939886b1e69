// What most test programs include, precompiled. Each file includes what it uses all the same; the
// leg `analysis` compiles each by itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>
