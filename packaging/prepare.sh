# Sourced by ./run, ./test and .ci/run from the root of the tree.

# need_packages <use>...: installs the packages of packaging/packages.txt for these uses that are missing, by name.
need_packages()
{
    local use package missing=()
    while read -r use package; do
        [[ " $* " == *" $use "* ]] || continue
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done < packaging/packages.txt
    ((${#missing[@]})) || return 0
    echo "Installing: ${missing[*]}"
    local root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || { echo "Please install as root: apt-get install ${missing[*]}" >&2; return 1; }
        root=(sudo)
    fi
    "${root[@]}" apt-get update -q &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build <preset> [target...]: configures and builds with as many jobs as there are processors.
build()
{
    local preset=$1 targets=()
    shift
    (($#)) && targets=(--target "$@")
    cmake --preset "$preset" && cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
}
