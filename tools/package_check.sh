#!/bin/sh
# Installs the package in a Debian 12 of its own, uses it there as an ordinary person, removes it while
# it runs, purges it and looks for what it has left. Needs root and debootstrap; what it mounts and
# starts is seen by nobody else and goes with it.
#
#   tools/package_check.sh PACKAGE [FOLDER]     FOLDER: a bare Debian to copy, instead of a download
set -eu

if [ "$1" != --inside ]; then
  if [ "$(id -u)" -ne 0 ]; then
    echo 'package_check.sh: a Debian of its own takes root to make' >&2
    exit 1
  fi
  bare=$(mktemp -d "${TMPDIR:-/var/tmp}/lunevra-bare.XXXXXX")
  trap 'rm -rf --one-file-system "$bare"' EXIT
  chmod 755 "$bare"
  if [ -n "${2:-}" ]; then
    cp -a "$2/." "$bare"
  else
    debootstrap --variant=minbase bookworm "$bare" >/dev/null
  fi
  cp "$1" "$bare/root/lunevra.deb"
  unshare --mount --pid --fork --kill-child -- "$0" --inside "$bare"
  exit
fi

bare=$2
mount -t proc proc "$bare/proc"
cp /etc/resolv.conf "$bare/etc/resolv.conf"
printf '#!/bin/sh\nexit 101\n' >"$bare/usr/sbin/policy-rc.d" # no service starts in here
chmod +x "$bare/usr/sbin/policy-rc.d"

fail() {
  echo "package_check.sh: $1" >&2
  exit 1
}

within() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
    chroot "$bare" "$@"
}

apt() {
  within apt-get -qq -y --no-install-recommends -o Dpkg::Use-Pty=0 "$@" >"$bare/tmp/apt.log" 2>&1 || {
    cat "$bare/tmp/apt.log" >&2
    fail "apt-get $1"
  }
}

person() { # an ordinary one; her session is a virtual X server
  within runuser -u anna -- env HOME=/home/anna XDG_RUNTIME_DIR=/home/anna/run DISPLAY="$display" \
    XDG_DATA_HOME=/home/anna/data "$@"
}

# Waits for a condition, a command, for at most a minute.
eventually() {
  deadline=$(($(date +%s) + 60))
  until "$@"; do
    [ "$(date +%s)" -lt "$deadline" ] || fail "waited in vain: $*"
    sleep 0.1
  done
}

# Names of all that there is, but for what belongs to the person, to nobody, and to apt, dpkg and man.
everything() {
  within find / -xdev \( -path /home/anna -o -path /tmp -o -path /proc -o -path /var/log \
    -o -path /var/cache/man \) -prune -o -print | sort
}

launch() {
  : >"$bare/tmp/lunevra.log"
  person lunevra >>"$bare/tmp/lunevra.log" 2>&1 &
  program=$!
  eventually grep -q 'agent status' "$bare/tmp/lunevra.log"
  person lunevra 2>/dev/null || fail 'a second copy does not end with 0'
  kill -0 "$program" || fail 'the program has ended by itself'
}

gone() {
  ! within pgrep -u anna -x lunevra >/dev/null
}

quit() {
  within pkill -TERM -u anna -x lunevra
  eventually gone
  wait "$program" || fail "a quit ended with $?"
  if grep -v 'enforcement agent' "$bare/tmp/lunevra.log"; then
    fail 'the program complains'
  fi
}

display=

apt update
apt satisfy "$(dpkg-deb -f "$bare/root/lunevra.deb" Depends)"
apt install appstream desktop-file-utils man-db procps xvfb
within useradd --create-home anna
within install -d -m 700 -o anna /home/anna/run /home/anna/data /home/anna/pictures
everything >"$bare/tmp/before"

apt install /root/lunevra.deb
grep 'nobody is locked out' "$bare/tmp/apt.log" >/dev/null || fail 'no word about the first start'
within desktop-file-validate /usr/share/applications/com.lunevra.desktop
within desktop-file-validate /etc/xdg/autostart/com.lunevra.desktop
within appstreamcli validate --no-net /usr/share/metainfo/com.lunevra.lunevra.metainfo.xml >/dev/null
for page in lunevra lunevra-rehearsal; do
  complaints=$(within man --warnings -Tutf8 -Z "$page" 2>&1 >/dev/null)
  [ -z "$complaints" ] || fail "$page.1: $complaints"
done
echo 'installed; its entries and pages are well formed'

# Abstract sockets are seen from everywhere, so the number has to be one that nobody uses.
person Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp >"$bare/tmp/display" 2>/dev/null &
eventually test -s "$bare/tmp/display"
display=:$(cat "$bare/tmp/display")
night=/usr/share/doc/lunevra/examples/first_night.night
person lunevra-rehearsal "$night" >/dev/null
person lunevra-rehearsal --show --speed 6000 --pictures /home/anna/pictures "$night" >/dev/null
[ "$(find "$bare/home/anna/pictures" -name '*-blocking-*.png' -size +20k | wc -l)" -gt 0 ] ||
  fail 'no picture of the lock'
echo 'plays a night, in memory and on a display'

person /usr/libexec/lunevra-at-login
[ ! -e "$bare/home/anna/data/lunevra" ] || fail 'a login started it for somebody who never did'
# Switched off, so that the hour of this check does not matter.
person mkdir -p /home/anna/data/lunevra/cloud
echo '{"type": "flag", "value": false}' \
  >"$bare/home/anna/data/lunevra/cloud/scheduleEnabled.json"
launch
quit
echo 'starts, calls the running copy, and quits with 0'

launch
apt remove lunevra
grep 'still runs for: anna' "$bare/tmp/apt.log" >/dev/null || fail 'no word about what stays in force'
kill -0 "$program" || fail 'removing the package has ended the program'
quit
echo 'removed while it runs: says what stays, ends nothing'

apt purge lunevra
everything >"$bare/tmp/after"
diff "$bare/tmp/before" "$bare/tmp/after" || fail 'purging does not leave things as they were'
[ -s "$bare/home/anna/data/lunevra/standard.sqlite" ] || fail "the person's settings are gone"
echo "purged: nothing is left but the person's own data"
