#pragma once

// What nearly every test needs, compiled once for all of them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/RecordBytes.h"
#include "support/SilentAsserts.h"
#include "support/TagSets.h"
#include "vxswf.h"
