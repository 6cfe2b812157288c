# deps.sh -- sourced by ./tavik and ./run-tests: the Debian packages the
# project needs, installed when missing (as root), else the line to run.

TAVIK_BUILD_PACKAGES="cmake make g++ tcl8.6-dev tk8.6-dev bison libgtest-dev"
TAVIK_RUN_PACKAGES="tcl8.6 tk8.6"
TAVIK_TEST_PACKAGES="xvfb xauth x11-apps imagemagick gtkwave"

# ensure_packages PACKAGE... : returns non-zero when some remain missing.
ensure_packages() {
  missing=""
  for p in "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed" || missing="$missing $p"
  done
  [ -z "$missing" ] && return 0
  if [ "$(id -u)" -eq 0 ]; then
    echo "installing:$missing" >&2
    export DEBIAN_FRONTEND=noninteractive
    { apt-get update && apt-get install -y --no-install-recommends $missing; } >&2 || {
      echo "could not install:$missing" >&2
      return 1
    }
    return 0
  fi
  echo "missing packages; run: sudo apt-get install -y$missing" >&2
  return 1
}

# build_tree SOURCE BUILD [CMAKE-OPTION...] [-- TARGET...] : configures once
# with the options, then builds the targets (all of them when none is named).
build_tree() {
  src=$1 bld=$2
  shift 2
  options=""
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do
    options="$options $1"
    shift
  done
  [ "$1" = "--" ] && shift
  targets=""
  for t in "$@"; do targets="$targets --target $t"; done
  if [ ! -f "$bld/CMakeCache.txt" ]; then
    cmake -S "$src" -B "$bld" $options || return 1
  fi
  cmake --build "$bld" -j2 $targets || return 1
  # A whole build is a date the launchers' up_to_date can trust: the build
  # tool leaves alone a file none of whose own inputs changed.
  [ -n "$targets" ] || touch "$bld/.built"
}

# up_to_date SOURCE BUILD FILE : true when FILE exists and no source of the
# build (CMake files, code, the Tcl tree, the examples) is newer than it, or
# than the last whole build of BUILD, so that a start need not ask the build
# tool (which takes most of a second to say so).
up_to_date() {
  [ -f "$3" ] || return 1
  since=$3
  [ -f "$2/.built" ] && [ "$2/.built" -nt "$3" ] && since=$2/.built
  newer=$(find "$1/CMakeLists.txt" "$1/foundations" "$1/network" "$1/normalise" "$1/ecexe" \
               "$1/trace" "$1/panel" "$1/app" "$1/tcl" "$1/examples" -newer "$since" -print 2>/dev/null | head -n 1)
  [ -z "$newer" ]
}
