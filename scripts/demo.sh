#!/usr/bin/env bash
# Builds the library and runs the command-line tool's main job.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh default
./build/default/quillmark version
./build/default/quillmark list
