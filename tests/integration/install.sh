#!/bin/bash
# install.sh CMAKE BUILD VERSION: installs a build into a folder of its own, and looks at what a desktop makes of it.
#
# Every behaviour that fails is named, and the others are tried all the same. Exit status 77, with the reason, where a
# program that this takes is not installed.
set -uo pipefail
[ $# = 3 ] || { echo "usage: install.sh CMAKE BUILD VERSION" >&2; exit 2; }
cmake=$1 build=$2 version=$3
identifier=example.tarnwik.client
programs=(tarnwik tarnwikctl tarnwik-service)
sizes=(16 22 24 32 48 64 128 256 512)

for program in appstreamcli desktop-file-validate man col dbus-run-session dbus-send xmllint; do
  command -v "$program" >/dev/null || { echo "SKIPPED: $program is not installed." >&2; exit 77; }
done

world=$(mktemp -d "${TMPDIR:-/tmp}/tarnwik-install.XXXXXX")
trap 'rm -rf "$world"' EXIT
trap 'exit 143' TERM INT HUP
prefix=$world/prefix stage=$world/stage
# Nothing of the person who runs this is read or changed, and no daemon of the machine is talked to.
export HOME=$world/home XDG_RUNTIME_DIR=$world/runtime LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen MANWIDTH=200
export DBUS_SYSTEM_BUS_ADDRESS=disabled: DBUS_SESSION_BUS_ADDRESS=disabled:
unset DISPLAY WAYLAND_DISPLAY XDG_CONFIG_HOME XDG_DATA_HOME XDG_STATE_HOME XDG_CACHE_HOME DESTDIR MANPATH MANOPT
mkdir -p "$HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

failures=0
# behaviour NAME COMMAND...: it holds when the command succeeds. What the command says is shown only where it does not.
behaviour() {
  local name=$1
  shift
  if "$@" >"$world/said" 2>&1; then
    echo "ok      $name"
  else
    echo "FAILED  $name"
    sed 's/^/        /' "$world/said"
    failures=$((failures + 1))
  fi
}

# same EXPECTED ACTUAL: whether they are; tells both where they are not.
same() { [ "$1" = "$2" ] || { echo "expected “$1”, got “$2”"; return 1; }; }

# manual PROGRAM: the page as it is read, in plain letters.
manual() { man --warnings=all -E ascii -l "$prefix/share/man/man1/$1.1" | col -bx; }

# long_options: those of a text, each once.
long_options() { grep -oE -- '(^|[^[:alnum:]-])--[a-z][a-z-]*' | grep -oE -- '--.*' | sort -u; }

# entry KEY FILE: the value of a key of a desktop entry.
entry() { sed -n "s/^$1=//p" "$2"; }

every_file_is_installed() {
  local file missing=0
  for file in "${programs[@]/#/bin/}" "${programs[@]/%/.1}" \
    share/applications/$identifier.desktop share/metainfo/$identifier.metainfo.xml \
    share/dbus-1/services/$identifier.service share/tarnwik/info.json \
    share/bash-completion/completions/tarnwikctl \
    share/icons/hicolor/scalable/apps/$identifier.svg \
    share/icons/hicolor/symbolic/apps/$identifier-symbolic.svg; do
    case $file in *.1) file=share/man/man1/$file ;; esac
    [ -s "$prefix/$file" ] || { echo "$file is missing"; missing=1; }
  done
  return $missing
}

nothing_else_is_installed() {
  # 17 of the list above, and a picture for each size.
  same $((${#programs[@]} * 2 + 7 + ${#sizes[@]})) "$(find "$prefix" -type f | wc -l)" ||
    { find "$prefix" -type f; return 1; }
}

the_desktop_entry_is_valid() {
  local said
  said=$(desktop-file-validate "$prefix/share/applications/$identifier.desktop" 2>&1) && same "" "$said"
}

the_desktop_entry_belongs_to_the_installation() {
  local file=$prefix/share/applications/$identifier.desktop
  same true "$(entry DBusActivatable "$file")" &&
    same $identifier "$(entry Icon "$file")" &&
    test -x "$prefix/bin/$(entry Exec "$file")"
}

the_catalogue_entry_names() {
  local xpath=$1 expected=$2
  same "$expected" "$(xmllint --xpath "string($xpath)" "$prefix/share/metainfo/$identifier.metainfo.xml")"
}

every_icon_size_has_its_picture() {
  local size file
  for size in "${sizes[@]}"; do
    file=$prefix/share/icons/hicolor/${size}x$size/apps/$identifier.png
    # Width and height stand in the header.
    same "$(printf '89504e47 %08x %08x' "$size" "$size")" \
      "$(od -An -v -tx1 -N24 "$file" | tr -d ' \n' | sed -E 's/^(.{8}).{24}(.{8})(.{8})$/\1 \2 \3/')" || return
  done
}

# The desktop gives the menu-bar icon its colour, so that it must have none of its own beside that.
the_menu_bar_icon_takes_its_colour_from_the_desktop() {
  local file=$prefix/share/icons/hicolor/symbolic/apps/$identifier-symbolic.svg
  xmllint --noout --nonet "$file" &&
    same "17 17" "$(xmllint --xpath 'concat(/*/@width, " ", /*/@height)' "$file")" &&
    same 0 "$(xmllint --xpath 'count(//@fill[. != "currentColor"] | //@stroke | //@opacity)' "$file")"
}

# activation_runs FOLDER PROGRAM: what the bus starts from the installation in FOLDER.
activation_runs() {
  local file=$1/share/dbus-1/services/$identifier.service
  same $identifier "$(entry Name "$file")" && same "$2" "$(entry Exec "$file")"
}

# As a launcher does it, on a bus that knows of no other services.
the_bus_starts_the_application() {
  cat >"$world/activate.sh" <<'SCRIPT'
set -eu
ask() { dbus-send --session --print-reply=literal --reply-timeout=20000 --dest="$@"; }
daemon=org.freedesktop.DBus
ask $daemon / $daemon.StartServiceByName "string:$1" uint32:0 | grep -q "uint32 1"
process=$(ask $daemon / $daemon.GetConnectionUnixProcessID "string:$1" | grep -oE '[0-9]+$')
trap 'kill "$process"' EXIT
[ "$(readlink "/proc/$process/exe")" = "$2" ] || { readlink "/proc/$process/exe"; exit 1; }
ask "$1" "/$(tr . / <<<"$1")" org.freedesktop.DBus.Introspectable.Introspect |
  grep -A3 'interface name="org.freedesktop.Application"' | grep -q 'method name="Activate"'
SCRIPT
  XDG_DATA_HOME=$prefix/share XDG_DATA_DIRS=$prefix/share \
    timeout 60 dbus-run-session -- bash "$world/activate.sh" $identifier "$(realpath "$prefix")/bin/tarnwik"
}

runs_and_tells_its_version() { same "$1 $version" "$("$prefix/bin/$1" --version)"; }

the_manual_has_no_warnings() {
  local said
  said=$(manual "$1" 2>&1 >"$world/page") && same "" "$said" && grep -q "^ *$1 -- the Tarnwik" "$world/page"
}

the_manual_has_every_option() {
  local help
  help=$("$prefix/bin/$1" --help | long_options) && [ -n "$help" ] &&
    same "$help" "$(manual "$1" 2>/dev/null | sed -n '/^DESCRIPTION/,/^EXAMPLES/p' | long_options)"
}

the_manual_has_every_command() {
  local command commands
  mapfile -t commands < <("$prefix/bin/$1" --help | sed -nE 's/^  ((store )?[a-z][a-z-]*).*/\1/p')
  [ ${#commands[@]} -gt 10 ] || { echo "only ${#commands[@]} commands"; return 1; }
  manual "$1" 2>/dev/null >"$world/page"
  for command in "${commands[@]}"; do
    grep -qE "^ +$command( |\$)" "$world/page" || { echo "not there: $command"; return 1; }
  done
}

"$cmake" --install "$build" --prefix "$prefix" >"$world/log" 2>&1 || { cat "$world/log"; exit 1; }
behaviour "every file is installed" every_file_is_installed
behaviour "nothing else is installed" nothing_else_is_installed
behaviour "the desktop entry is valid" the_desktop_entry_is_valid
behaviour "the desktop entry belongs to the installation" the_desktop_entry_belongs_to_the_installation
behaviour "the catalogue entry is valid" \
  appstreamcli validate --no-net "$prefix/share/metainfo/$identifier.metainfo.xml"
behaviour "the catalogue entry and the desktop entry fit together" appstreamcli validate-tree --no-net "$prefix"
behaviour "the catalogue entry names the version" the_catalogue_entry_names '//release[1]/@version' "$version"
behaviour "the catalogue entry names the launcher" the_catalogue_entry_names '//launchable' "$identifier.desktop"
behaviour "every icon size has its picture" every_icon_size_has_its_picture
behaviour "the menu-bar icon takes its colour from the desktop" the_menu_bar_icon_takes_its_colour_from_the_desktop
behaviour "the bus is told where the application lies" activation_runs "$prefix" "$prefix/bin/tarnwik"
behaviour "the bus starts the application" the_bus_starts_the_application
for program in "${programs[@]}"; do
  behaviour "$program runs and tells its version" runs_and_tells_its_version "$program"
  behaviour "the manual of $program has no warnings" the_manual_has_no_warnings "$program"
  behaviour "the manual of $program has every option and no other" the_manual_has_every_option "$program"
done
behaviour "the manual of tarnwikctl has every command" the_manual_has_every_command tarnwikctl

# As packages are made: the files lie elsewhere for now, and must not know.
DESTDIR=$stage "$cmake" --install "$build" --prefix /usr --component desktop >"$world/log" 2>&1 ||
  { cat "$world/log"; exit 1; }
behaviour "a staged installation knows its later place" activation_runs "$stage/usr" /usr/bin/tarnwik

[ $failures = 0 ] || { echo "$failures failed"; exit 1; }
