#!/usr/bin/env bash
# Installs the Debian packages that Vantrelo needs, as root or through sudo; silent and quick when all are there.
#   packages.sh run     to build and run        packages.sh test    to test as well
#   packages.sh bench   to measure              packages.sh fuzz    to fuzz
#   packages.sh package to build a package      packages.sh check-package    to try it in a system of its own
set -euo pipefail

run=(g++ cmake ninja-build pkg-config ccache qt6-base-dev qt6-svg-dev libqt6svg6 libqt6opengl6-dev libcairo2-dev libgl-dev
     zlib1g-dev libzip-dev libexpat1-dev libhdf5-dev libaec-dev nlohmann-json3-dev libcli11-dev
     fonts-liberation fonts-dejavu-core)
test=(libgtest-dev xvfb xauth clang-format-14 clang-14 poppler-utils ghostscript librsvg2-bin
      libgl1-mesa-dri python3 python3-ezdxf)
declare -a wanted=("${run[@]}")
for set in "$@"; do
    case "$set" in
        run) ;;
        test) wanted+=("${test[@]}") ;;
        bench) wanted+=(libbenchmark-dev minpack-dev gemmi-dev) ;;
        package) wanted+=(dpkg-dev file librsvg2-bin) ;;
        check-package) wanted+=(lintian appstream desktop-file-utils mmdebstrap) ;;
        fuzz) wanted+=(clang-14 libclang-rt-14-dev) ;;
        *) echo "packages.sh: unknown set $set" >&2; exit 2 ;;
    esac
done

have=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)
missing=()
for package in "${wanted[@]}"; do
    grep -qx "$package installed" <<<"$have" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
    as_root=()
elif command -v sudo >/dev/null; then
    as_root=(sudo)
else
    echo "These Debian packages are missing: ${missing[*]}" >&2
    echo "Install them as root, or install sudo, and try again." >&2
    exit 1
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
