# Sourced after packages.sh: a static Qt for Windows, built from Debian's source package.
# shellcheck shell=bash

# What the program and its tests do not use is left out. `tabletevent` needs a header that Debian's source lacks.
WINDOWS_QT_OPTIONS=(-xplatform win32-g++ -device-option CROSS_COMPILE=x86_64-w64-mingw32- -opensource
    -confirm-license -release -static -nomake examples -nomake tests -no-opengl -no-dbus -no-icu -no-openssl -qt-zlib
    -qt-libpng -qt-libjpeg -qt-pcre -qt-freetype -qt-harfbuzz -no-feature-vulkan -no-feature-network
    -no-feature-concurrent -no-feature-sql -no-feature-xml -no-feature-tabletevent -no-feature-graphicsview
    -no-feature-printer -no-feature-direct2d)
WINDOWS_QT_FILES=1150 # that are compiled, about

# fetch_source_of package folder: unpacks Debian's source package into folder/source. The list of source packages is a
# copy of the system's list of packages, kept in the folder, so that the system's own lists stay as they are.
fetch_source_of() {
    local package=$1 folder=$2 list options
    mkdir -p "$folder/apt/sources" "$folder/apt/lists/partial"
    for list in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
        [[ ! -f $list ]] || sed 's/^Types: .*/Types: deb-src/; s/^deb /deb-src /' "$list" \
            >"$folder/apt/sources/debian.${list##*.}"
    done
    options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$folder/apt/sources"
        -o "Dir::State::lists=$folder/apt/lists" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" --quiet update </dev/null
    (cd "$folder" && apt-get "${options[@]}" --quiet source --download-only "$package" </dev/null)
    rm -rf "$folder/source"
    dpkg-source --no-check --extract "$folder"/*.dsc "$folder/source"
}

# Copies each line, and says now and then how many files have been compiled.
show_compiled_files() {
    awk -v all="$WINDOWS_QT_FILES" '
        / -c / { ++compiled }
        / -c / && compiled % 50 == 0 { printf "  %d of about %d files\n", compiled, all; fflush() }'
}

# copy_licences source folder: Qt's own, and those of the libraries that are compiled into it.
copy_licences() {
    local source=$1 folder=$2 library file
    mkdir -p "$folder"
    cp "$source/LICENSE.LGPL3" "$folder/Qt-LGPL-3.txt"
    cp "$source/LICENSE.GPL3" "$folder/Qt-GPL-3.txt"
    for library in double-conversion easing freetype harfbuzz-ng libjpeg libpng md4c pcre2 rfc6234 tinycbor zlib; do
        for file in "$source/src/3rdparty/$library"/{LICENSE,LICENCE,COPYING,FTL,docs/FTL,docs/LICENSE}{,.txt,.TXT,.md}; do
            [[ ! -f $file ]] || cp "$file" "$folder/$library-${file##*/}"
        done
    done
}

# build_windows_qt prefix work: installs Qt into the folder `prefix`, which then has a file "complete".
build_windows_qt() {
    local prefix=$1 work=$2 name
    echo "Building Qt for Windows: about a quarter of an hour on two idle processors, once. Log: $work/build.log"
    rm -rf "$prefix" "$work"
    mkdir -p "$work/build" "$work/compilers"
    fetch_source_of qtbase-opensource-src "$work"
    # Under their plain names the compilers may be those with other threads.
    for name in gcc g++; do
        ln -s "$(command -v "x86_64-w64-mingw32-$name-posix")" "$work/compilers/x86_64-w64-mingw32-$name"
    done
    (
        cd "$work/build" || exit
        export PATH=$work/compilers:$PATH
        "$work/source/configure" -prefix "$prefix" "${WINDOWS_QT_OPTIONS[@]}" >"$work/configure.log" 2>&1
        nice make --jobs="$(nproc)" 2>&1 | tee "$work/build.log" | show_compiled_files
        make install >"$work/install.log" 2>&1
    )
    copy_licences "$work/source" "$prefix/licences"
    touch "$prefix/complete"
    rm -rf "$work/source" "$work/build"
}
