// What a key costs the person: in a box, with all pages loaded and their fields followed, and in the window
// that finds fields.
#pragma once

namespace bench {

/// Answers how many limits were missed.
int PrintKeys();

}  // namespace bench
