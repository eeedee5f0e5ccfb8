#!/bin/bash
# Every test that needs no desktop, under AddressSanitizer and UndefinedBehaviorSanitizer. Run in the project's folder.
set -euo pipefail
cmake --preset asan -DKESTRUNE_DEEP=OFF
cmake --build --preset asan -j"$(nproc)"
ctest --test-dir build/asan --output-on-failure --no-tests=error --timeout 300 -j"$(nproc)" -LE 'desktop|style'
