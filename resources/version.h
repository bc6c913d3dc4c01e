// The one place where the product's version and names are written, for the resource scripts.
#pragma once

#define TARN_MAJOR 1
#define TARN_MINOR 0
#define TARN_REVISION 0
#define TARN_VERSION_TEXT "1.0.0"
#define TARN_PRODUCT "KV-TARN Configuration"
#define TARN_COMPANY "Veldran, Inc"
