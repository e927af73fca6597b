#!/usr/bin/env bash
# Regenerates every built-in table under data/ from the published packages that each
# generator names. Each generator lives in tools/<name>/ with a script `generate`; the
# packages it reads and their versions are recorded beside the tables it writes.
set -euo pipefail
cd "$(dirname "$0")"
shopt -s nullglob
for g in */generate; do
    echo "== ${g%/generate}"
    "./$g"
done
