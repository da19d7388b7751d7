#!/usr/bin/env bash
# install.sh CASE: one test of what is installed; tests/install/CMakeLists.txt hands over the rest.
set -euo pipefail

case=$1
prefix=$SCRATCH/moved
mkdir -p "$SCRATCH/tmp/$case"
export TMPDIR=$SCRATCH/tmp/$case CCACHE_NOHASHDIR=1
read -r -a sanitizers <<<"${SANITIZE:+-fsanitize=$SANITIZE}"

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}
expect_file() {
    [[ -e $1 ]] || fail "there is no $1"
}

# A source that includes every public header below a folder, as some platforms' own headers leave the preprocessor:
# with macros of common names. They have to be there afterwards too.
every_header() {
    local macro
    grep -rhoE '^#include <[a-z0-9_]+>' "$1" | sort -u
    printf '#define %s\n' 'ERROR 0' 'DELETE (0x00010000L)' 'min(a, b) (((a) < (b)) ? (a) : (b))' \
        'max(a, b) (((a) > (b)) ? (a) : (b))' 'near'
    (cd "$1" && find . -name '*.h' | sed 's|^\./\(.*\)|#include <\1>|' | sort)
    for macro in ERROR DELETE min max near; do
        printf '#ifndef %s\n#error "%s is gone"\n#endif\n' "$macro" "$macro"
    done
}

# configure SOURCE BINARY [ARGUMENT...]
configure() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE="$BUILD_TYPE" -DCMAKE_CXX_COMPILER="$CXX" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$LAUNCHER" -DCMAKE_CXX_FLAGS="${sanitizers[*]}" "${@:3}"
}

# stranger NAME ARGUMENT...: configures, builds and runs the stranger's programs, one for each component.
stranger() {
    local binary=$SCRATCH/$1 component
    rm -rf "$binary"
    configure "$SOURCE/tests/install/stranger" "$binary" -DCOMPONENTS="${COMPONENTS//,/;}" "${@:2}"
    cmake --build "$binary"
    for component in ${COMPONENTS//,/ }; do
        "$binary/stranger-$component"
    done
}

# with_pkg_config PC_FOLDER: the same without CMake.
with_pkg_config() {
    local component module flags program folder
    for component in ${COMPONENTS//,/ }; do
        module=quorvane-${component,,}
        program=$SCRATCH/$case-$component
        read -r -a flags <<<"$(PKG_CONFIG_PATH=$1 pkg-config --cflags --libs "$module")"
        for folder in "${flags[@]}"; do
            if [[ $folder == -L* ]]; then
                flags+=("-Wl,-rpath,${folder#-L}")
            fi
        done
        "$CXX" -std=c++20 -Wall -Wextra -Werror "${sanitizers[@]}" "$SOURCE/tests/install/stranger/$component.cpp" \
            -o "$program" "${flags[@]}"
        "$program"
    done
}

case $case in
    APrefixHoldsHeadersLibrariesAndPackageFiles)
        rm -rf "$SCRATCH/prefix" "$prefix"
        cmake --install "$BUILD" --prefix "$SCRATCH/prefix"
        mv "$SCRATCH/prefix" "$prefix"
        expect_file "$prefix/include/QuorvaneSDK/Facade/Quorvane.h"
        expect_file "$prefix/lib/cmake/Quorvane/QuorvaneConfig.cmake"
        for component in ${COMPONENTS//,/ }; do
            expect_file "$prefix/lib/pkgconfig/quorvane-${component,,}.pc"
            expect_file "$(find "$prefix/lib" -name "libQuorvane$component.so" -o -name "libQuorvane$component.a")"
        done
        ! grep -rlF -e "$SOURCE" -e "$BUILD" "$prefix/include" "$prefix/lib/cmake" "$prefix/lib/pkgconfig" ||
            fail "an installed text names a folder of the build"
        ;;
    NoInstalledHeaderIncludesAThirdParty)
        # <cstdint> is the standard library's, <curl/curl.h> and <QObject> are not.
        ! grep -rnE '^#[[:space:]]*include[[:space:]]*<' "$prefix/include" | grep -vE '<[a-z0-9_]+>' ||
            fail "an installed header includes a third party's"
        ;;
    AStrangerFindsEveryComponentWithCMake)
        every_header "$prefix/include/QuorvaneSDK" >"$SCRATCH/EveryHeader.cpp"
        stranger "$case" -DCMAKE_PREFIX_PATH="$prefix" -DEVERY_HEADER="$SCRATCH/EveryHeader.cpp"
        ;;
    AStrangerFindsEveryComponentWithPkgConfig)
        with_pkg_config "$prefix/lib/pkgconfig"
        ;;
    AStrangerFindsTheBuildTreeWithCMake)
        stranger "$case" -DCMAKE_PREFIX_PATH="$BUILD"
        ;;
    AStrangerFindsTheBuildTreeWithPkgConfig)
        with_pkg_config "$BUILD/lib/pkgconfig"
        ;;
    AnUnknownComponentIsToldByName)
        rm -rf "${SCRATCH:?}/$case"
        ! told=$(configure "$SOURCE/tests/install/stranger" "$SCRATCH/$case" -DCMAKE_PREFIX_PATH="$prefix" \
            -DCOMPONENTS=Telepathy 2>&1) || fail "a component that does not exist was found"
        [[ $told == *'has no component "Telepathy"'* ]] || fail "expected the component's name, was told: $told"
        ;;
    ADifferentMinorVersionIsRefused)
        rm -rf "${SCRATCH:?}/$case"
        ! told=$(configure "$SOURCE/tests/install/stranger" "$SCRATCH/$case" -DCMAKE_PREFIX_PATH="$prefix" \
            -DCOMPONENTS=SDK -DWANTED=0.1 2>&1) || fail "version 0.1 was found"
        [[ $told == *'compatible'* ]] || fail "expected a word about versions, was told: $told"
        ;;
    TheExamplesBuildAgainstThePrefix)
        rm -rf "${SCRATCH:?}/$case"
        configure "$SOURCE/examples/first-search" "$SCRATCH/$case" -DCMAKE_PREFIX_PATH="$prefix"
        cmake --build "$SCRATCH/$case"
        if [[ $COMPONENTS == *Capture* ]]; then
            rm -rf "${SCRATCH:?}/$case-capture"
            configure "$SOURCE/examples/capture" "$SCRATCH/$case-capture" -DCMAKE_PREFIX_PATH="$prefix"
            cmake --build "$SCRATCH/$case-capture"
        fi
        ;;
    AStaticBuildServesAStrangerToo)
        # Kept between runs: only the libraries' archives are made anew, from the compiler's cache where there is one.
        configure "$SOURCE" "$SCRATCH/static" -DBUILD_SHARED_LIBS=OFF -DQUORVANE_TOOLS=OFF -DQUORVANE_TESTS=OFF \
            -DQUORVANE_QT="$QT" -DQUORVANE_SANITIZE="$SANITIZE"
        cmake --build "$SCRATCH/static"
        rm -rf "$SCRATCH/static-prefix"
        cmake --install "$SCRATCH/static" --prefix "$SCRATCH/static-prefix"
        [[ -z $(find "$SCRATCH/static-prefix" -name '*.so*') ]] || fail "a static build installed a shared library"
        stranger "$case" -DCMAKE_PREFIX_PATH="$SCRATCH/static-prefix"
        with_pkg_config "$SCRATCH/static-prefix/lib/pkgconfig"
        ;;
    TheFrontPageShowsTheExampleAsItIsCompiled)
        shown=$(awk '/^```cpp$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$SOURCE/README.md")
        [[ -n $shown ]] || fail "README.md shows no program"
        diff <(printf '%s\n' "$shown") "$SOURCE/examples/first-search/main.cpp"
        (($(printf '%s\n' "$shown" | wc -l) <= 20)) || fail "the program on the front page is longer than 20 lines"
        ;;
    *)
        fail "no case $case"
        ;;
esac
