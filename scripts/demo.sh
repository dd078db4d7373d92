#!/usr/bin/env bash
# The main job: builds the library, the command-line tool and the jar, then runs the
# demo on the first pad found (a virtual pad when none is attached). The
# demo's images land in build/demo/.
set -euo pipefail
cd "$(dirname "$0")/.."
# Only what the demo runs: the library, the CLI and the jar; no test suites.
bash scripts/setup.sh default quillmark velatrix-quillmark-jar
mkdir -p build/demo
./build/default/quillmark version
./build/default/quillmark list
./build/default/quillmark demo build/demo
# The same from Java: the jar carries its native library.
java -jar build/default/velatrix-quillmark-2.0.98.jar build/demo
