# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT

# Shared by ./run and ./test; meant to be sourced from a shell that stands in the checkout.

say() {
    printf '\n== %s\n' "$*"
}

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# missing_packages run|test... : the packages of these commands which are not installed, one a line.
missing_packages() {
    wanted=$(awk -v commands=" $* " \
        '!/^#/ { for (i = 2; i <= NF; i++) if (index(commands, " " $i " ")) print $1 }' scripts/packages.txt)
    for package in $wanted; do
        state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) || state=none
        [ "$state" = installed ] || printf '%s\n' "$package"
    done
}

# install_packages PACKAGE... : as root, or with the rights of root.
install_packages() {
    if [ "$(id -u)" = 0 ]; then
        sh scripts/install-packages.sh "$@"
    elif ! command -v sudo >/dev/null; then
        printf 'Neither root nor sudo.\n' >&2
        return 1
    elif [ -t 0 ]; then
        sudo sh scripts/install-packages.sh "$@"
    else
        sudo -n sh scripts/install-packages.sh "$@"
    fi
}

# install_missing run|test : installs what that command needs and the system lacks; asks for sudo only then.
install_missing() {
    command -v dpkg-query >/dev/null || fail "This needs Debian 12: dpkg is not here."
    missing=$(missing_packages "$1" "$1?" | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    say "Installing: $missing"
    install_packages $missing || printf 'The installation failed.\n' >&2
    still=$(missing_packages "$1" | tr '\n' ' ')
    [ -z "$still" ] || fail "Missing: ${still% }. Run as root: sh scripts/install-packages.sh $missing"
}

# build_tree PRESET FOLDER [OPTION...] [-- TARGET...] : configures once, then builds. Ninja shows the progress.
build_tree() {
    preset=$1
    folder=$2
    shift 2
    options=
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        options="$options $1"
        shift
    done
    [ $# -eq 0 ] || shift
    if command -v ccache >/dev/null; then
        options="$options -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache"
    fi
    say "Configuring $folder ($preset)"
    mkdir -p "$folder"
    cmake --preset "$preset" $options >"$folder/configure.log" 2>&1 || {
        cat "$folder/configure.log" >&2
        fail "The configuration of $folder failed."
    }
    say "Building $folder"
    ninja -C "$folder" "$@" || fail "The build of $folder failed."
}
