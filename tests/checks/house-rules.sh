#!/usr/bin/env bash
# house-rules.sh ROOT SCRATCH CASE: runs the rules of the house on a small tree made for the case.
set -euo pipefail

root=$1
tree=$2
case=$3

rm -rf "$tree"
mkdir -p "$tree/src/JSON" "$tree/src/Facade" "$tree/src/Platform/Native" "$tree/tests/JSON" "$tree/testing" "$tree/sandbox"
cd "$tree"
echo '#pragma once' >src/JSON/A.h
echo '#include "JSON/A.h"' >src/Facade/F.h
echo '#include "JSON/A.h"' >src/Platform/Native/N.h
echo '#include "Facade/F.h"' >testing/T.h
echo '#include "testing/T.h"' >sandbox/S.h
echo '#include "sandbox/S.h"' >tests/JSON/a.cpp
echo 'add_library(a a.cpp)' >CMakeLists.txt

passes() {
    "$root/.ci/house-rules" "$tree"
}
fails_with() {
    local told
    if told=$("$root/.ci/house-rules" "$tree"); then
        echo "the tree passed" >&2
        return 1
    fi
    if [[ $told != *"$1"* ]]; then
        printf 'expected "%s", was told:\n%s\n' "$1" "$told" >&2
        return 1
    fi
}

case $case in
    ATreeWithoutBreachesPasses)
        passes
        ;;
    ATreeWithoutCodeIsABreach)
        rm -r src tests testing sandbox
        fails_with "there is no code"
        ;;
    AnIncludeUpwardsIsABreach)
        echo '#include "Facade/F.h"' >src/JSON/B.cpp
        fails_with "includes upwards: src/JSON/B.cpp -> src/Facade/F.h"
        ;;
    AFloorThatIncludesAnAdapterIsABreach)
        echo '#include "Platform/Native/N.h"' >src/Facade/G.cpp
        fails_with "includes upwards: src/Facade/G.cpp -> src/Platform/Native/N.h"
        ;;
    ATestKitThatIncludesTheSandboxIsABreach)
        echo '#include "sandbox/S.h"' >testing/U.cpp
        fails_with "includes upwards: testing/U.cpp -> sandbox/S.h"
        ;;
    ACircleOfFilesIsABreach)
        echo '#include "JSON/C.h"' >src/JSON/B.h
        echo '#include "JSON/B.h"' >src/JSON/C.h
        fails_with "in a circle"
        ;;
    AnIncludeOfAFileThatIsNotThereIsABreach)
        echo '#include "JSON/Gone.h"' >src/JSON/B.cpp
        fails_with "includes what is not there: src/JSON/B.cpp -> JSON/Gone.h"
        ;;
    AHostIsABreachUnlessItIsReserved)
        printf '// http%s\n' '://127.0.0.1:3000/a' 's://api.quorvane.invalid/v2' '://localhost' '://www.example.com' >src/JSON/B.h
        passes
        printf '// http%s\n' 's://somewhere.net/a' >>src/JSON/B.h
        fails_with "names a host: ./src/JSON/B.h:5:"
        ;;
    AFolderOfOneMachineIsABreach)
        printf '// /%s\n' 'usr/share/common-licenses' >src/JSON/B.h
        passes
        printf '// /%s\n' 'home/somebody/a' >>src/JSON/B.h
        fails_with "names a folder of one machine: ./src/JSON/B.h:2:"
        ;;
    ATestSwitchedOffIsABreach)
        printf 'TEST(A, %s_B) {}\n' DISABLED >tests/JSON/b.cpp
        fails_with "switches a test off: tests/JSON/b.cpp"
        ;;
    ASkipForAnotherReasonThanMissingRecordingsIsABreach)
        printf '%s() << "slow";\n' GTEST_SKIP >tests/JSON/b.cpp
        fails_with "skips a test for another reason than missing recordings: tests/JSON/b.cpp"
        ;;
    GatheringFilesByPatternIsABreach)
        printf 'file(%s files *.cpp)\n' GLOB >>CMakeLists.txt
        fails_with "gathers files by pattern: ./CMakeLists.txt:2"
        ;;
    AModelThatNobodyFuzzesIsABreach)
        mkdir -p fuzz/Models src/Models
        printf '    &check<Entry<QVOld>>,\n' >fuzz/Models/ModelsFuzzer.cpp
        printf 'QV_JSON_MODEL(quorvane::Entry<quorvane::QVOld>);\n' >src/Models/old.cpp
        passes
        printf 'QV_JSON_MODEL(quorvane::QVNew);\n' >src/Models/new.cpp
        fails_with "decodes a model that fuzz/Models/ModelsFuzzer.cpp does not know: QVNew"
        ;;
    *)
        echo "no case $case" >&2
        exit 1
        ;;
esac
rm -rf "$tree"
