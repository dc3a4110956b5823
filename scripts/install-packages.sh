#!/bin/sh
# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
#
# install-packages.sh PACKAGE... : installs Debian packages, and leaves no server of the system started or enabled.
# Needs root. While dpkg works, a policy denies the start of the servers below; whatever policy was there before
# decides about everything else, and is put back at the end. A server that was installed before stays as it was.
set -eu

servers='prosody ejabberd epmd'
policy=/usr/sbin/policy-rc.d
saved=$policy.before-protolink

# One at a time, also with another checkout: the lock is on a folder that is there anyway.
exec 9</var/lib/dpkg
flock 9

restore_policy() {
    if [ -e "$saved" ]; then
        mv -f "$saved" "$policy"
    elif grep -qs 'written by protoLink' "$policy"; then
        rm -f "$policy"
    fi
}

unit_exists() {
    for unit in "/lib/systemd/system/$1.service" "/usr/lib/systemd/system/$1.service" "/etc/init.d/$1"; do
        if [ -e "$unit" ]; then
            return 0
        fi
    done
    return 1
}

restore_policy # a run that was killed may have left its own
new=
for server in $servers; do
    unit_exists "$server" || new="$new $server"
done

trap restore_policy EXIT
trap 'exit 130' HUP INT TERM
if [ -e "$policy" ]; then
    mv "$policy" "$saved"
fi
cat >"$policy" <<POLICY
#!/bin/sh
# written by protoLink's set-up; goes away when it ends
for word in "\$@"; do
    for server in$new; do
        case "\$word" in "\$server" | "\$server".*) exit 101 ;; esac
    done
done
if [ -x "$saved" ]; then
    exec "$saved" "\$@"
fi
exit 0
POLICY
chmod 755 "$policy"

export DEBIAN_FRONTEND=noninteractive
apt-get -qq -o DPkg::Lock::Timeout=600 update
apt-get -qq -y -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 install --no-install-recommends "$@"

for server in $new; do
    unit_exists "$server" || continue
    for unit in "$server.service" "$server.socket"; do
        if [ -e "/lib/systemd/system/$unit" ] || [ -e "/usr/lib/systemd/system/$unit" ]; then
            # The helper works for maintainer scripts only, so it is told to be in one.
            DPKG_MAINTSCRIPT_PACKAGE=$server deb-systemd-helper disable "$unit" || echo "could not disable $unit" >&2
        fi
    done
    if [ -e "/etc/init.d/$server" ]; then
        update-rc.d "$server" disable
    fi
done
