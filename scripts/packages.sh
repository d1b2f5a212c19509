# Which Debian packages the project needs, and how they are installed. Sourced by the other scripts.

# What it takes to build and run the programs: the compiler, the libraries, and what the application loads by name (QML
# modules, its typeface).
build_packages=(
  clang-19 lld-19 libclang-rt-19-dev cmake ninja-build pkg-config ca-certificates
  qt6-base-dev qcoro-qt6-dev
  qt6-declarative-dev qt6-declarative-dev-tools qt6-declarative-private-dev qt6-svg-dev
  qml6-module-qtquick qml6-module-qtquick-templates qml6-module-qtquick-layouts qml6-module-qtquick-window
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript fonts-inter
  libsimdjson-dev libsodium-dev libsecret-1-dev libcpp-httplib-dev libsqlite3-dev libssl-dev libicu-dev
)

# What the tests add: the test frameworks, and the real daemons that the integration tests run against.
test_packages=(
  libgtest-dev libgmock-dev libbenchmark-dev curl python3 python3-gi gir1.2-glib-2.0 gir1.2-gcr-3
  dbus dbus-bin gnome-keyring libsecret-tools network-manager
  wireguard-go wireguard-tools iproute2 iputils-ping util-linux
  qml6-module-qttest
  python3-pytest at-spi2-core xvfb openbox xdotool imagemagick
  appstream desktop-file-utils man-db bsdextrautils libxml2-utils libglib2.0-bin x11-utils
)

# What the checks on the source add.
lint_packages=(clang-format-19 clang-tidy-19 git)

# A virtual desktop, where the application is shown to nobody, and pictures of it.
desktop_packages=(xvfb openbox xdotool imagemagick dbus dbus-bin python3)

# What the benchmarks add: the peer, and what looks at the windows from outside.
bench_packages=(network-manager-gnome python3-xlib strace xvfb openbox xdotool at-spi2-core)

# What the picture of the terminal is taken with.
picture_packages=(xvfb xterm imagemagick fonts-dejavu-core)

# install_packages NAME...: installs those that are missing, and touches neither apt nor the network when none is.
install_packages() {
  local missing=() name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Please install as root: apt-get install ${missing[*]}" >&2; return 1; }
    as_root=(sudo)
  fi
  echo "Installing: ${missing[*]}" >&2

  # In a shell of its own, whose end takes the policy back, whatever ends it: installing a daemon for the tests must not
  # start it on the machine's own network.
  (
    policy=/usr/sbin/policy-rc.d
    if [ ! -e "$policy" ] && [[ " ${missing[*]} " == *" network-manager "* ]]; then
      trap '"${as_root[@]}" rm -f "$policy"' EXIT
      trap 'exit 143' INT TERM HUP
      printf '#!/bin/sh\nexit 101\n' | "${as_root[@]}" tee "$policy" >/dev/null
      "${as_root[@]}" chmod 755 "$policy"
    fi
    "${as_root[@]}" apt-get update -q >&2 &&
      "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}" >&2
  )
}
