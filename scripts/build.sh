# Configures and builds one preset. Sourced by the other scripts, from the project's folder.

# build PRESET [TARGET...]: quick when nothing changed. What the compiler says is shown only where it fails.
build() {
  local preset=$1 log
  shift
  log=$(mktemp)
  if [ ! -f "build/$preset/build.ninja" ]; then
    echo "Configuring ($preset)…" >&2
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; rm -f "$log"; return 1; }
  fi
  echo "Building ($preset)…" >&2
  cmake --build --preset "$preset" ${1:+--target "$@"} >"$log" 2>&1 || { cat "$log" >&2; rm -f "$log"; return 1; }
  rm -f "$log"
}
