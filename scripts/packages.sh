# Which Debian packages the project needs, and how they are installed. Sourced by the other scripts.

# What it takes to build and run the programs.
build_packages=(
  clang-19 lld-19 libclang-rt-19-dev cmake ninja-build pkg-config
  qt6-base-dev qcoro-qt6-dev
  libsimdjson-dev libsodium-dev libsecret-1-dev libcpp-httplib-dev libsqlite3-dev libssl-dev
)

# What the tests add: the test frameworks, and the real daemons that the integration tests run against.
test_packages=(
  libgtest-dev libgmock-dev curl openssl python3 python3-gi gir1.2-glib-2.0 gir1.2-gcr-3
  dbus dbus-bin gnome-keyring libsecret-tools network-manager
  wireguard-go wireguard-tools iproute2 iputils-ping util-linux
)

# What the checks on the source add.
lint_packages=(clang-format-19 clang-tidy-19)

# What the measurements add.
bench_packages=(libbenchmark-dev)

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

  # A test machine must not have its own network taken over by the daemon that the tests run in namespaces.
  local policy=/usr/sbin/policy-rc.d held=
  if [ ! -e "$policy" ] && [[ " ${missing[*]} " == *" network-manager "* ]]; then
    printf '#!/bin/sh\nexit 101\n' | "${as_root[@]}" tee "$policy" >/dev/null
    "${as_root[@]}" chmod 755 "$policy"
    held=1
  fi
  local result=0
  "${as_root[@]}" apt-get update -q >&2 &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -q -y --no-install-recommends "${missing[@]}" >&2 || result=$?
  [ -z "$held" ] || "${as_root[@]}" rm -f "$policy"
  return $result
}
