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

# A machine without any package: a folder that any user may enter, with ./dev and the only programs on its path.
bare_machine() {
    machine=$(mktemp -d -p /tmp)
    trap 'rm -rf "$machine"' EXIT
    chmod 755 "$machine"
    mkdir "$machine/bin"
    cp "$root/dev" "$machine/dev"
    for program in bash env dirname nproc; do
        ln -s "$(command -v "$program")" "$machine/bin/$program"
    done
    program dpkg-query 'exit 1'
}
program() {
    printf '#!/usr/bin/env bash\n%s\n' "$2" >"$machine/bin/$1"
    chmod 755 "$machine/bin/$1" "$machine/dev"
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
        bare_machine
        command=(env PATH="$machine/bin" bash "$machine/dev" setup)
        if ((EUID == 0)); then
            command=(setpriv --reuid=65534 --regid=65534 --clear-groups "${command[@]}")
        fi
        ends_with 1 "these packages are missing and installing them needs root or sudo: build-essential cmake" \
            "${command[@]}"
        ;;
    MissingPackagesAreInstalledWithoutQuestionsAndRecommendations)
        bare_machine
        # shellcheck disable=SC2016 # for the program that is written
        program apt-get 'echo "apt-get $DEBIAN_FRONTEND $*"'
        # shellcheck disable=SC2016
        program sudo '[[ $1 != -n ]] || shift; [[ $1 == true ]] || exec "$@"'
        ends_with 0 "apt-get noninteractive update" env PATH="$machine/bin" bash "$machine/dev" setup
        ends_with 0 "apt-get noninteractive install -q -y --no-install-recommends build-essential cmake " \
            env PATH="$machine/bin" bash "$machine/dev" setup
        ;;
    NothingIsInstalledWhereNothingIsMissing)
        bare_machine
        program dpkg-query 'printf installed'
        program apt-get 'exit 1'
        ends_with 0 "" env PATH="$machine/bin" bash "$machine/dev" setup
        ;;
    *)
        echo "no case $case" >&2
        exit 1
        ;;
esac
rm -rf "$scratch"
