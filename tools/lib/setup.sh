# Sourced by run, test and bench: finds what is missing and installs it, or says what to install.
# Usage: need_packages PACKAGE...   (Debian package names)

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root" || exit 1
jobs=$(nproc 2>/dev/null || echo 2)

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libqt6svg6 qt6-qpa-plugins libgl-dev fonts-dejavu-core)

need_packages() {
  if ! command -v dpkg-query >/dev/null 2>&1; then
    local tool
    for tool in cmake ninja c++; do
      command -v "$tool" >/dev/null 2>&1 || {
        echo "This system is not Debian; install what these packages hold: $*"
        exit 1
      }
    done
    return 0
  fi
  local package missing=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local admin=""
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null 2>&1 || {
      echo "Please install as root: ${missing[*]}"
      exit 1
    }
    admin=sudo
  fi
  echo "Installing: ${missing[*]}"
  { $admin apt-get update -qq && DEBIAN_FRONTEND=noninteractive $admin apt-get install -y -qq --no-install-recommends \
      "${missing[@]}"; } >/dev/null || {
    echo "Could not install: ${missing[*]}"
    exit 1
  }
}

# build PRESET [TARGET...]: configures once, builds quietly, shows the log when it fails.
build() {
  local preset=$1
  shift
  mkdir -p build
  local log="build/$preset.log"
  echo "Building ($preset) ..."
  if ! { cmake --preset "$preset" && cmake --build "build/$preset" -j "$jobs" ${1:+--target "$@"}; } >"$log" 2>&1; then
    grep -nE 'error|Error|FAILED' "$log" | head -40
    tail -n 20 "$log"
    echo "The build failed; the whole log is $log."
    exit 1
  fi
}
