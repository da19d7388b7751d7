#!/usr/bin/env bash
# run.sh ROOT SCRATCH CASE: how .ci/run sums up what ./dev left, with a ./dev made for the case.
set -euo pipefail

root=$1
tree=$2
case=$3

rm -rf "$tree"
mkdir -p "$tree/.ci" "$tree/build/debug"
cp "$root/.ci/run" "$tree/.ci/run"

# dev TESTS FAILURES SKIPPED CHECK: a ./dev that leaves these results, and whose check ends with that status.
dev() {
    cat >"$tree/dev" <<SCRIPT
#!/usr/bin/env bash
if [[ \$1 == check ]]; then exit $4; fi
printf '<testsuite name="a"\n\ttests="%s"\n\tfailures="%s"\n\tdisabled="0"\n\tskipped="%s"\n\t>\n' $1 $2 $3 >build/debug/tests.xml
printf '<testcase name="tests=" tests="9"/>\n</testsuite>\n' >>build/debug/tests.xml
[[ $2 == 0 ]]
SCRIPT
    chmod +x "$tree/dev"
}
# ends STATUS LINE: the exit status and the last line.
ends() {
    local status=0 told
    told=$("$tree/.ci/run" 2>&1) || status=$?
    if [[ $status != "$1" || ${told##*$'\n'} != "$2" ]]; then
        printf 'expected status %s and "%s", got %s and:\n%s\n' "$1" "$2" "$status" "$told" >&2
        exit 1
    fi
}

case $case in
    TheLastLineCountsTheTests)
        dev 12 0 2 0
        ends 0 "10 passed, 0 failed, 2 skipped"
        ;;
    AFailedTestFailsTheRun)
        dev 12 3 0 0
        ends 1 "9 passed, 3 failed, 0 skipped"
        ;;
    AFailedCheckFailsTheRun)
        dev 12 0 0 1
        ends 1 "12 passed, 0 failed, 0 skipped"
        ;;
    ARunWithoutTestsFails)
        dev 0 0 0 0
        ends 1 "0 passed, 0 failed, 0 skipped"
        ;;
    ResultsOfAnEarlierRunDoNotCount)
        dev 12 0 0 0
        "$tree/.ci/run" >/dev/null
        printf '#!/bin/sh\nexit 1\n' >"$tree/dev"
        ends 1 "0 passed, 0 failed, 0 skipped"
        ;;
    *)
        echo "no case $case" >&2
        exit 1
        ;;
esac
rm -rf "$tree"
