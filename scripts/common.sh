# What ./run, ./test, ./coverage and their like share: the packages that the project needs, and building a preset.
# Sourced by bash scripts that stand in the project's folder.

# Debian packages to build and run the program.
run_packages=(cmake ninja-build g++ qt6-base-dev qt6-multimedia-dev qt6-speech-dev qt6-declarative-dev
  libgl-dev libasio-dev libcli11-dev nlohmann-json3-dev libvalijson-dev libbenchmark-dev libgtest-dev libgmock-dev
  libcpp-httplib-dev zlib1g-dev fonts-dejavu-core)
# Those that the tests need besides.
test_packages=(clang-14 libclang-rt-14-dev libgdal-dev xvfb openbox xdotool x11-utils dpkg-dev file desktop-file-utils
  appstream g++-mingw-w64-x86-64-posix python3-minimal)
# For ./coverage and ./lint.
coverage_packages=(gcovr)
lint_packages=(clang-format-14 clang-tidy-14)

say() { printf '%s\n' "$*" >&2; }

# install_packages NAME...: installs what is missing, as root or through sudo; elsewhere names it and stops.
install_packages() {
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null || ! { [ -t 0 ] || sudo -n true 2>/dev/null; }; then
      say "These packages are missing and neither root nor sudo is at hand to install them:"
      say "  apt-get install ${missing[*]}"
      exit 1
    fi
    as_root=(sudo)
  fi
  say "Installing ${missing[*]} ..."
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [TARGET...]
build() {
  local preset=$1
  shift
  # A build folder that was made elsewhere and copied here refers to other paths; it is made anew.
  local cache=build/$preset/CMakeCache.txt
  if [ -f "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$cache"; then rm -rf "build/$preset"; fi
  cmake --preset "$preset" >"/tmp/corvane-cmake-$$.log" 2>&1 || { cat "/tmp/corvane-cmake-$$.log" >&2; exit 1; }
  rm -f "/tmp/corvane-cmake-$$.log"
  local targets=()
  [ $# -gt 0 ] && targets=(--target "$@")
  cmake --build --preset "$preset" "${targets[@]}" >&2
}

# run_tests PRESET: every test of a build. Many wait, for one another or for the clock, so more of them run at a time
# than there are processors.
run_tests() { ctest --preset "$1" -j $((4 * $(nproc))) --no-tests=error; }

# The fuzz targets that have been built.
fuzz_targets() { find build/asan/fuzz -maxdepth 1 -type f -name "Fuzz*" -printf "%f\n" | sort; }

# run_fuzz_target TARGET SECONDS [option...]
run_fuzz_target() {
  local target=$1 seconds=$2
  shift 2
  local corpus=build/asan/corpus/$target seeds=fuzz/corpus/$target
  mkdir -p "$corpus" build/asan/findings
  [ -d "$seeds" ] || seeds=
  "build/asan/fuzz/$target" "$corpus" $seeds -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="build/asan/findings/$target-" -print_final_stats=1 "$@"
}
