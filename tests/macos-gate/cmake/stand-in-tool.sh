#!/bin/bash
# Takes the place of a program that the build makes for macOS and runs: stand-in-tool.sh PROGRAM ARGUMENT... OUTPUT.
# Such a program cannot run here. What it would write is left empty, so that the build goes on.
set -euo pipefail
: >"${!#}"
