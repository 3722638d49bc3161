#!/usr/bin/env bash
# vesk-cli oiagd: the age at death of the delivered fit, and the refusals of what the fit cannot take.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
fail() { echo "FAIL: $*" >&2; exit 1; }

out=$("$cli" oiagd --family west --boai 85 --ratio 0.6 --pgr 0.02)
[ "$(echo "$out" | head -1)" = "boai,age_at_death_minus_boai,age_at_death" ] || fail "head: $out"
# WEST 85: -14.618383 + 3.457083·0.6 + 15.382705·e^0.02
echo "$out" | awk -F, -v want="$(awk 'BEGIN { printf "%.10f", -14.618383 + 3.457083 * 0.6 + 15.382705 * exp(0.02) }')" \
    'NR==2 { d = $2 - want; if (d < 0) d = -d; if ($1 != 85 || d > 1e-9 || ($3 - $2) != 85) exit 1 }' || fail "value: $out"
# No ratio and no growth: the constant alone.
[ "$("$cli" oiagd --family SOUTH --boai 45 | sed -n 2p)" = "45,-64.579211,-19.579211" ] || fail "constant"

expect_error() {
    local pattern=$1; shift
    local msg
    if msg=$("$cli" oiagd "$@" 2>&1 >/dev/null); then fail "accepted: $*"; fi
    echo "$msg" | grep -qF -- "$pattern" || fail "message for $*: $msg"
}
expect_error "0.02 for 2 per cent" --family West --boai 60 --pgr 2
expect_error "outside the rates the open-interval fit was made on" --family West --boai 60 --pgr -0.05
expect_error "starts at 45, 50" --family West --boai 90
expect_error "no ratio" --family West --boai 60 --ratio 1.5
expect_error "no coefficients for the family 'Western'" --family Western --boai 60
expect_error "are required" --boai 60
"$cli" oiagd --help | grep -q "FRACTION" || fail "help"
echo "oiagd: all checks passed"
