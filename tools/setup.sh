#!/bin/sh
# Installs the Debian packages that building and testing need, and those that are named to it; does
# nothing where they are present.
set -eu

packages="
ccache clang clang-format clang-tidy cmake g++ git libclang-rt-14-dev librsvg2-bin ninja-build
pkg-config shellcheck
dbus dbus-user-session dosfstools e2fsprogs exfat-fuse exfatprogs gnome-keyring imagemagick libsecret-tools openbox picom sqlite3 systemd
tint2 tzdata umockdev x11-utils x11-xkb-utils x11-xserver-utils xauth xdotool xserver-xorg-core
xserver-xorg-video-dummy xvfb
libbenchmark-dev libgmock-dev libgtest-dev libhowardhinnant-date-dev libmount-dev libsecret-1-dev
libsqlite3-dev libssl-dev libsystemd-dev libudev-dev libxcb-icccm4-dev libxcb-randr0-dev
libxcb-xfixes0-dev libxcb-xkb-dev libxcb-xtest0-dev libxcb1-dev nlohmann-json3-dev uuid-dev
qml6-module-qt-labs-folderlistmodel qml6-module-qtqml qml6-module-qtqml-models
qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-shapes
qml6-module-qtquick-templates qt6-base-dev qt6-declarative-dev qt6-declarative-dev-tools
fonts-ebgaramond fonts-inter fonts-quicksand
"

missing=""
for package in $packages "$@"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
    missing="$missing $package"
done
[ -n "$missing" ] || exit 0

root=""
[ "$(id -u)" -eq 0 ] || root=sudo
echo "Installing:$missing"
export DEBIAN_FRONTEND=noninteractive
$root apt-get update -qq
# shellcheck disable=SC2086 # one argument a package is the point
$root apt-get install -y -qq --no-install-recommends $missing >/dev/null
