#!/bin/sh
# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
#
# check_packages.sh ROOT : what a command needs is missed where it is not installed; what it can do without holds up nobody.
set -u
cd "$1" || exit 1
folder=$(mktemp -d) || exit 1
trap 'rm -rf "$folder"' EXIT
# A system on which one package cannot be had.
cat >"$folder/dpkg-query" <<'QUERY'
#!/bin/sh
for package; do :; done
[ "$package" = "$GONE" ] && exit 1
printf installed
QUERY
chmod 755 "$folder/dpkg-query"
PATH=$folder:$PATH
. scripts/setup.sh
install_packages() {
    printf '%s\n' "$@" >"$folder/asked"
    return 1
}

faults=0
# expect PACKAGE COMMAND CODE : how the command's set-up ends without the package, after it was asked for.
expect() {
    GONE=$1
    export GONE
    : >"$folder/asked"
    (install_missing "$2") >"$folder/output" 2>&1
    code=$?
    if [ "$code" != "$3" ] || [ "$(cat "$folder/asked")" != "$4" ]; then
        printf '%s without %s: ended with %s, asked for "%s"\n' "$2" "$1" "$code" "$(cat "$folder/asked")"
        cat "$folder/output"
        faults=1
    fi
}
expect nothing test 0 ''
expect mcabber test 1 mcabber
expect mcabber run 0 ''
expect libpurple-dev test 1 libpurple-dev
expect prosody run 1 prosody
expect ccache test 0 ccache
expect ccache run 0 ccache
exit $faults
