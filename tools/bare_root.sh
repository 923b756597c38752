#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Shows that the project builds on a bare machine: makes a Debian 12 root with nothing but git in FOLDER, clones the
# committed state of this project into it, and runs `./dev run` and `./dev test` there, each timed, in a folder whose name
# has blanks and letters that are not ASCII, and without a locale.
#
# usage (as root): tools/bare_root.sh FOLDER
#   FOLDER must not exist yet, or be empty. It stays, to look into; delete it with rm -rf (nothing is left mounted).
#
# Needs mmdebstrap and apt lists that are up to date. The root gets this machine's own Debian 12 sources, its apt
# settings for fetching, its name resolution and certificates. Exit status: 0 when both commands succeed, else 1.
set -euo pipefail

suite=bookworm
place='/källkod för quillon' # in the root: a name that unquoted words and a missing locale trip over
project=$(readlink -f -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/..")

fail() {
    printf 'bare_root: %s\n' "$*" >&2
    exit 1
}

# Prints this machine's apt sources of the suite, one a line, as a sources.list has them.
list_sources() {
    # shellcheck disable=SC2016  # apt-get expands these
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        grep -E " $suite(-updates|-security)? main\$" | sort -u || true
}

# Prints this machine's apt settings for fetching (proxies, certificates, dates), as apt.conf has them.
list_fetch_settings() {
    apt-config dump |
        grep -E '^Acquire::((https?|ftp)::|Retries |Check-Valid-Until |Check-Date |Languages(::)? )' || true
}

# Copies into the root, under the same names, the files that reaching the sources takes.
copy_host_files() {
    local path
    while IFS= read -r path; do
        [[ -f $path ]] || continue
        mkdir -p -- "$1${path%/*}"
        cp -L -- "$path" "$1$path"
    done < <(
        printf '%s\n' /etc/resolv.conf /etc/hosts /etc/ssl/certs/ca-certificates.crt
        list_fetch_settings | sed -n 's/^Acquire::https::.*CaInfo "\(.*\)";$/\1/Ip'
    )
}

make_root() {
    local sources settings
    sources=$(list_sources)
    [[ -n $sources ]] || fail "this machine has no apt sources of $suite; add them and run apt-get update"
    settings=$(mktemp)
    trap 'rm -f "$settings"' RETURN
    list_fetch_settings >"$settings"
    mmdebstrap --mode=root --variant=minbase --include=git --aptopt="$settings" "$suite" "$1" - <<<"$sources"
    copy_host_files "$1"
}

# Clones the project's committed state into the root, whoever the project belongs to.
clone_project() {
    export GIT_CONFIG_GLOBAL=$1/tmp/gitconfig
    git config --global safe.directory '*'
    git clone --quiet --no-local -- "$project" "$1$place"
    [[ -z $(git -C "$project" status --porcelain) ]] ||
        printf 'bare_root: changes that are not committed are not in the clone\n' >&2
}

# Runs a command of the cloned project in the root, in a mount namespace of its own: what is mounted for it goes
# with it. There is no HOME and no locale, as in CI.
run_in_root() {
    local folder=$1 proxies=() name
    shift
    for name in http_proxy https_proxy ftp_proxy no_proxy HTTP_PROXY HTTPS_PROXY NO_PROXY; do
        [[ -z ${!name:-} ]] || proxies+=("$name=${!name}")
    done
    # shellcheck disable=SC2016  # the inner shell expands these
    unshare --mount --pid --fork --kill-child bash -euc '
        root=$1
        shift
        mount --make-rprivate /
        mount -t proc proc "$root/proc"
        mount -t tmpfs -o mode=755 dev "$root/dev"
        for node in null zero full random urandom tty; do
            : >"$root/dev/$node"
            mount --bind "/dev/$node" "$root/dev/$node"
        done
        ln -s /proc/self/fd "$root/dev/fd"
        for fd in 0:stdin 1:stdout 2:stderr; do ln -s "/proc/self/fd/${fd%:*}" "$root/dev/${fd#*:}"; done
        mkdir -m 1777 "$root/dev/shm"
        mkdir "$root/dev/pts"
        mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
        ln -s pts/ptmx "$root/dev/ptmx"
        exec chroot "$root" "$@"
    ' bash "$folder" env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "${proxies[@]}" \
        bash -c 'cd "$1" && exec "${@:2}"' bash "$place" "$@" </dev/null
}

# Runs a command in the root and adds its time and exit status to the report.
report=()
timed() {
    local folder=$1 started=$SECONDS status=0
    shift
    printf '=== %s\n' "$*"
    run_in_root "$folder" "$@" || status=$?
    report+=("$(printf '%-12s %4d s   exit status %d' "$*" $((SECONDS - started)) "$status")")
    return "$status"
}

if (($# != 1)) || [[ $1 == -* ]]; then
    sed -n '2,/^$/s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
    exit 2
fi
(($(id -u) == 0)) || fail "this needs root"
command -v mmdebstrap >/dev/null || fail "mmdebstrap is missing: apt-get install mmdebstrap"
folder=$(readlink -m -- "$1")
[[ ! -e $folder || -d $folder && -z $(ls -A -- "$folder") ]] || fail "$folder is there and not empty"

make_root "$folder"
clone_project "$folder"
failed=0
timed "$folder" ./dev run || failed=1
timed "$folder" ./dev test || failed=1
printf '%s\n' '=== Debian 12, minbase and git' "${report[@]}"
exit "$failed"
