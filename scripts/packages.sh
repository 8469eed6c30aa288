# Debian packages by purpose, and the one function that installs what is missing. Sourced by ./dev.

packages_build=(
    g++ cmake ninja-build pkg-config libglbinding-dev libegl-dev libgl-dev libgl1-mesa-dri libegl-mesa0
    libpng-dev libopenexr-dev nlohmann-json3-dev libcli11-dev libcairo2-dev glslang-tools ffmpeg git
)
packages_test=(libgtest-dev libgmock-dev googletest frei0r-plugins-dev melt python3)
# Qt, and what lets its programs show a window on X11 and Wayland.
packages_studio=(qt6-base-dev qt6-qpa-plugins libxcb-cursor0)
packages_windows=(g++-mingw-w64-x86-64-posix dpkg-dev wine wine64 xvfb xauth icoutils zip)
packages_slurm=(slurm-wlm munge)
packages_bench=(libbenchmark-dev python3)
packages_fuzz=(clang libclang-rt-14-dev)
packages_lint=(clang-format clang-tidy cppcheck cloc python3)

# ensure_packages NAME...: installs those that are not there, saying which; needs root or sudo only then.
ensure_packages() {
    local -a missing=() become=()
    local name
    for name in "$@"; do
        dpkg-query -W -f '${Status}' "$name" 2> /dev/null | grep -q 'ok installed' || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo > /dev/null || {
            echo "dev: these packages are missing and need root to install: ${missing[*]}" >&2
            exit 1
        }
        become=(sudo)
    fi
    echo "dev: installing ${missing[*]}"
    local log
    log=$(mktemp)
    "${become[@]}" apt-get update -qq > "$log" 2>&1 &&
        "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
            "${missing[@]}" >> "$log" 2>&1 || {
        cat "$log" >&2
        echo "dev: apt-get could not install ${missing[*]}" >&2
        rm -f "$log"
        exit 1
    }
    rm -f "$log"
}
