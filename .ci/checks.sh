# The checks that .ci/run and .ci/deep share. Sourced by bash in the project's root.

product_sources() {
    git ls-files -- host editor src tests benchmarks resources | grep -E '\.(h|cpp)$'
}

check_formatting() {
    echo "== formatting"
    product_sources | xargs clang-format --dry-run --Werror
}

check_arrows() {
    echo "== arrows"
    python3 .ci/arrows.py
}

# What tells the desktop of the program, by the desktop's own checkers.
check_desktop() {
    echo "== desktop files"
    desktop-file-validate resources/desktop/*.desktop
    appstreamcli validate --no-net --explain resources/desktop/*.metainfo.xml
    xmllint --noout resources/desktop/*.xml resources/app/*.svg resources/theme/*.svg
    local database
    database=$(mktemp -d)
    mkdir "$database/packages"
    cp resources/desktop/zenkari-mime.xml "$database/packages/zenkari.xml"
    XDG_DATA_DIRS=$database update-mime-database "$database"
    grep -qx 'image/openraster:\*.ora' "$database/globs"
    rm -r "$database"
}

# Every header must compile alone, without a precompiled header before it.
check_headers() {
    echo "== headers"
    build lint zk_header_check
}

# check_lint changed|all: clang-tidy; "changed" means since ZK_LINT_BASE, or the last five commits.
check_lint() {
    echo "== lint ($1)"
    local files base
    files=$(product_sources | grep '\.cpp$' | sort)
    if [ "$1" = changed ]; then
        base=${ZK_LINT_BASE:-$(git rev-parse -q --verify HEAD~5 || git rev-list --max-parents=0 HEAD | tail -n 1)}
        files=$(comm -12 - <(git diff --name-only "$base" | sort) <<<"$files")
    fi
    [ -n "$files" ] || return 0
    # The generated headers (ui_*.h, *.moc) must exist before clang reads the sources.
    build lint zk_autogen
    xargs -n 1 -P "$(nproc)" clang-tidy --quiet -p build/lint <<<"$files" 2> >(grep -v "warnings generated" >&2)
}
