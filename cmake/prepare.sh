# Shared by run, test and .ci: packages, environment, configure and build. Sourced by bash; expects
# the working directory to be the project's root.

# ensure_packages FILE...: installs what of the lists is missing; starts no package manager otherwise.
ensure_packages() {
    command -v dpkg-query >/dev/null || { echo "Not a Debian system: assuming the packages of $* are there."; return 0; }
    local wanted missing
    wanted=$(grep -hv '^#' "$@")
    missing=$(comm -23 <(sort -u <<<"$wanted") \
        <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' 2>/dev/null | awk '$2 == "installed" {print $1}' | sort -u))
    [ -z "$missing" ] && return 0
    local as_root=()
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and neither root nor sudo is at hand to install them:" $missing >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing:" $missing
    # shellcheck disable=SC2086 # a list of words
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# Qt warns at each start without a runtime folder.
ensure_runtime_dir() {
    [ -n "${XDG_RUNTIME_DIR:-}" ] && return
    XDG_RUNTIME_DIR="${TMPDIR:-/tmp}/zenkari-runtime-$(id -u)"
    export XDG_RUNTIME_DIR
    mkdir -p -m 700 "$XDG_RUNTIME_DIR"
}

# build PRESET [TARGET...]: configures once, then builds.
build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >"build-$preset.log" 2>&1 ||
        { cat "build-$preset.log" >&2; rm -f "build-$preset.log"; return 1; }
    rm -f "build-$preset.log"
    cmake --build "build/$preset" ${1:+--target "$@"}
}
