// VSOP87 version D to little-endian binary tables, one a body.
//
// Layout of data/vsop87d_<body>.bin:
//   18 x uint32   number of terms of L0..L5, B0..B5, R0..R5 (0 where a series is absent)
//   then for every series in that order, its terms as 3 x float64: A, B, C, meaning
//   A cos(B + C tau), tau in Julian millennia of TT from J2000.0; L and B in radians, R in AU.
// Terms keep the published order (largest first within a series). The package holds four
// terms whose numbers are not numbers (NaN) in its Uranus L4, Neptune L4 and B3 series: they
// are left out, and each one is named on standard output for the sources record. Their
// neighbours are of the order of 1e-9 radians, far below the series' own precision.
'use strict';
const fs = require('fs');
const path = require('path');

const [pkg, out] = process.argv.slice(2);
const bodies = ['mercury', 'venus', 'earth', 'mars', 'jupiter', 'saturn', 'uranus', 'neptune'];

for (const body of bodies) {
    const v = require(path.join(pkg, 'lib/data', `vsop87D${body}.cjs`)).default;
    const series = [];
    for (const coord of ['L', 'B', 'R']) {
        for (let p = 0; p < 6; p++) {
            const terms = v[coord][String(p)] || [];
            terms.forEach((term, i) => {
                if (!term.every(Number.isFinite)) {
                    console.log(`left out: ${body} ${coord}${p} term ${i} (not a number)`);
                }
            });
            series.push(terms.filter((term) => term.every(Number.isFinite)));
        }
    }
    const total = series.reduce((n, s) => n + s.length, 0);
    const buf = Buffer.alloc(18 * 4 + total * 24);
    let at = 0;
    for (const s of series) at = buf.writeUInt32LE(s.length, at);
    for (const s of series) {
        for (const term of s) {
            if (term.length !== 3) throw new Error(`${body}: bad term ${term}`);
            for (const x of term) at = buf.writeDoubleLE(x, at);
        }
    }
    fs.writeFileSync(path.join(out, `vsop87d_${body}.bin`), buf);
}
