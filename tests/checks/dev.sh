#!/usr/bin/env bash
# dev.sh ROOT SCRATCH CASE: how ./dev answers, without building anything.
set -euo pipefail

root=$1
scratch=$2
case=$3

rm -rf "$scratch"
mkdir -p "$scratch"

# ends_with STATUS TEXT COMMAND...: the command's exit status, and a text that its output holds.
ends_with() {
    local status=0 told
    told=$("${@:3}" 2>&1) || status=$?
    if [[ $status != "$1" || $told != *"$2"* ]]; then
        printf 'expected status %s and "%s", got %s and:\n%s\n' "$1" "$2" "$status" "$told" >&2
        return 1
    fi
}

case $case in
    HelpListsEveryVerb)
        for verb in setup build demo test check bench fuzz install; do
            ends_with 0 "  $verb " "$root/dev" help
        done
        ;;
    AnUnknownVerbIsAWrongForm)
        ends_with 2 'there is no verb "frobnicate"' "$root/dev" frobnicate
        ;;
    AnUnknownPresetIsAWrongForm)
        ends_with 2 'there is no preset "frobnicate"' "$root/dev" build frobnicate
        ;;
    MissingPackagesWithoutRootAndSudoAreNamedInOneSentence)
        # A machine that has no package, no sudo and another user than root: a search path with only these programs,
        # in a folder that any user may enter.
        machine=$(mktemp -d -p /tmp)
        trap 'rm -rf "$machine"' EXIT
        chmod 755 "$machine"
        mkdir "$machine/bin"
        cp "$root/dev" "$machine/dev"
        for program in bash env dirname nproc; do
            ln -s "$(command -v "$program")" "$machine/bin/$program"
        done
        printf '#!/bin/sh\nexit 1\n' >"$machine/bin/dpkg-query"
        chmod 755 "$machine/bin/dpkg-query" "$machine/dev"
        command=(env PATH="$machine/bin" bash "$machine/dev" setup)
        if ((EUID == 0)); then
            command=(setpriv --reuid=65534 --regid=65534 --clear-groups "${command[@]}")
        fi
        ends_with 1 "these packages are missing and installing them needs root or sudo: build-essential cmake" \
            "${command[@]}"
        ;;
    *)
        echo "no case $case" >&2
        exit 1
        ;;
esac
rm -rf "$scratch"
