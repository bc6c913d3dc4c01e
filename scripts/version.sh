#!/bin/bash
# Prints the version of the product, from resources/version.h.
set -eu
cd "$(dirname "$0")/.."
awk '/define TARN_(MAJOR|MINOR|REVISION) / { printf "%s%s", dot, $3; dot = "." } END { print "" }' resources/version.h
