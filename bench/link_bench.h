// Measures the server link and prints what it promises as a table; answers how many promises were not kept.
#pragma once

namespace bench {

int PrintLink();

}  // namespace bench
