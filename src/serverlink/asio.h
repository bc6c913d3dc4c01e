// Asio, as the files of this program include it. By what it then knows of the standard library it decides how
// it allocates, and what one file allocates another one frees; so a standard header always stands before it.
#pragma once

#include <cstddef>

// After the standard library.
#include <asio.hpp>
