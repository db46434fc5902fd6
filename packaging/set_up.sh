# shellcheck shell=bash disable=SC2034
# Read by run, test and .ci/run: installing what is missing, building, running the tests.
# Every function returns non-zero when its work failed.

# Package names of Debian 12 and Ubuntu 24.04.
build_packages=(
  g++ cmake ninja-build ccache
  qt6-base-dev libqt6opengl6-dev qt6-svg-dev libqcustomplot-dev   # windows, icons, charts
  libcli11-dev nlohmann-json3-dev                                 # console
  libhwy-dev                                                      # batches of states on vector units
  libfmt-dev                                                      # digits of tables
  libgtest-dev libgmock-dev libbenchmark-dev
  libeigen3-dev                                                   # tests: fits by another library
  fonts-dejavu-core                                               # the windows' tests measure text
)
# Programs that read back the vector pictures; their tests are left out without them.
converter_packages=(emf2svg libwmf-bin fonts-urw-base35)
check_packages=(git clang-format-14 clang-tidy-14 python3-jsonschema)

heading() { printf '\n== %s\n' "$1"; }

# install_missing PACKAGE...: installs with apt what dpkg does not know as installed.
install_missing() {
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "No apt here: these packages of Debian 12, or what answers to them, must be installed: $*"
    return 0
  fi
  local missing=() package
  for package in "$@"; do
    if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing+=("$package")
    fi
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  heading "Installing ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Neither root nor sudo. As root: apt-get install ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Acquire::Retries=3)
  "${apt[@]}" update && "${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null
}

# build PRESET [OPTION...]: configures and builds a preset of CMakePresets.json.
build() {
  local preset=$1
  shift
  heading "Building ($preset)"
  cmake --preset "$preset" --no-warn-unused-cli "$@" && cmake --build --preset "$preset" --parallel "$(nproc)"
}

# attribute NAME FILE ELEMENT: a number of the first such element of an XML file, 0 when it has none.
attribute() {
  awk -v name="$1" -v element="<$3" '
    !done && index($0, element) { inside = 1 }
    inside && match($0, "[ \t]" name "=\"[0-9]+\"") {
      value = substr($0, RSTART, RLENGTH); gsub(/[^0-9]/, "", value); done = 1; inside = 0 }
    inside && index($0, ">") { inside = 0; done = 1 }
    END { print value + 0 }' "$2"
}

# run_tests PRESET: runs every test program without a screen and away from the user's own data; the last line
# says how many test cases passed and failed. A program that died counts as one failed case.
run_tests() {
  local folder="$PWD/build/$1" results="$PWD/build/$1/test_results" status=0
  heading "Testing ($1)"
  rm -rf "$results"
  mkdir -p "$results/home"
  env -u QUOM_HOME -u GTEST_FILTER -u DISPLAY -u WAYLAND_DISPLAY LC_ALL=C.UTF-8 \
    QT_QPA_PLATFORM=offscreen GTEST_OUTPUT="xml:$results/" \
    HOME="$results/home" XDG_DATA_HOME="$results/home" XDG_CONFIG_HOME="$results/home" \
    ctest --test-dir "$folder" --output-on-failure --no-tests=error --parallel "$(nproc)" \
    --output-junit "$results/programs.junit" || status=$?

  local passed=0 failed=0 skipped=0 reports=0 bad_reports=0 file cases bad left_out
  for file in "$results"/*.xml; do
    [ -e "$file" ] || continue
    cases=$(attribute tests "$file" testsuites)
    bad=$(attribute failures "$file" testsuites)
    left_out=$(grep -cE '^ *<testcase .*result="(skipped|suppressed)"' "$file")
    passed=$((passed + cases - bad - left_out))
    failed=$((failed + bad))
    skipped=$((skipped + left_out))
    reports=$((reports + 1))
    [ "$bad" -eq 0 ] || bad_reports=$((bad_reports + 1))
  done
  local programs=0 bad_programs=0 left_out_programs=0
  if [ -e "$results/programs.junit" ]; then
    programs=$(attribute tests "$results/programs.junit" testsuite)
    bad_programs=$(attribute failures "$results/programs.junit" testsuite)
    left_out_programs=$(attribute skipped "$results/programs.junit" testsuite)
    skipped=$((skipped + left_out_programs))
  fi
  # Programs without a report: checks that are one case each, and programs that died.
  local quiet_good=$((programs - bad_programs - left_out_programs - (reports - bad_reports)))
  [ "$quiet_good" -le 0 ] || passed=$((passed + quiet_good))
  [ "$bad_programs" -le "$bad_reports" ] || failed=$((failed + bad_programs - bad_reports))
  [ "$status" -eq 0 ] || [ "$failed" -gt 0 ] || failed=1

  echo
  [ "$skipped" -eq 0 ] || echo "$skipped skipped"
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
}
