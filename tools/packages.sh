# Names of the Debian packages that the project is built and tested with; sourced by other scripts.
# install_packages NAME... installs those that are missing, as root or through sudo.
BUILD_PACKAGES="g++ cmake ninja-build ccache pkg-config libcurl4-openssl-dev libsimpleini-dev
    libcli11-dev nlohmann-json3-dev libutf8proc-dev"
WINDOW_PACKAGES="qt6-base-dev fonts-dejavu-core"
PACKAGE_PACKAGES="dpkg-dev file gzip"
TEST_PACKAGES="$WINDOW_PACKAGES $PACKAGE_PACKAGES libgtest-dev libgmock-dev git python3 python3-jsonschema tzdata
    xvfb openbox xdotool dbus at-spi2-core python3-gi gir1.2-atspi-2.0 faketime
    desktop-file-utils appstream lintian man-db mandoc zsh fish strace systemd"
LINT_PACKAGES="clang-format clang-tidy"
BENCH_PACKAGES="python3 libxml2-dev curl valgrind"
COVERAGE_PACKAGES="lcov"
FUZZ_PACKAGES="clang libclang-rt-14-dev"

install_packages() {
    local missing="" name
    command -v apt-get >/dev/null || return 0 # another system: its user installs them
    for name in "$@"; do
        dpkg-query -W -f '${Status}' "$name" 2>/dev/null | grep -q '^install ok installed' ||
            missing="$missing $name"
    done
    [ -n "$missing" ] || return 0
    echo "Installing:$missing" >&2
    local sudo=""
    [ "$(id -u)" = 0 ] || sudo="sudo"
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2 &&
        $sudo env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends $missing >&2
}
