// The one place where the product's version and names are written: for the resource scripts, for CMake and for the
// scripts, which read the three numbers from here.
#pragma once

#define TARN_MAJOR 1
#define TARN_MINOR 1
#define TARN_REVISION 0
#define TARN_PRODUCT "KV-TARN Configuration"
#define TARN_COMPANY "Veldran, Inc"

#define TARN_QUOTE(text) #text
#define TARN_DOTTED(major, minor, revision) TARN_QUOTE(major.minor.revision)
#define TARN_VERSION_TEXT TARN_DOTTED(TARN_MAJOR, TARN_MINOR, TARN_REVISION)
