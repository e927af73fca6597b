// ELP/MPP02 (the DE405 fit) to one little-endian binary table.
//
// Layout of data/elpmpp02.bin:
//   5 x float64   W1, the mean longitude of the Moon: W1(T) = sum of W1[k] T^k, radians
//   12 x uint32   number of terms of L0..L3, B0..B3, R0..R3 (series of T^0..T^3)
//   then for every series in that order, its terms as 6 x float64: A, p0, p1, p2, p3, p4,
//   meaning A sin(p0 + p1 T + p2 T^2 + p3 T^3 + p4 T^4), T in Julian centuries of TT from
//   J2000.0; L and B in arcseconds, R in kilometres.
// Longitude = W1 + sum of L_k T^k; it is referred to the mean ecliptic of date, counted from
// the departure point of J2000.0 (ELP/MPP02's own convention).
'use strict';
const fs = require('fs');
const path = require('path');

const [pkg, out] = process.argv.slice(2);
const e = require(path.join(pkg, 'lib/data/elpMppDeFull.cjs')).default;

if (e.W1.length !== 5) throw new Error('W1: expected 5 coefficients');
const series = [];
for (const coord of ['L', 'B', 'R']) {
    for (let p = 0; p < 4; p++) series.push(e[coord][String(p)] || []);
}
const total = series.reduce((n, s) => n + s.length, 0);
const buf = Buffer.alloc(5 * 8 + 12 * 4 + total * 48);
let at = 0;
for (const w of e.W1) at = buf.writeDoubleLE(w, at);
for (const s of series) at = buf.writeUInt32LE(s.length, at);
for (const s of series) {
    for (const term of s) {
        if (term.length !== 6) throw new Error(`bad term ${term}`);
        for (const x of term) at = buf.writeDoubleLE(x, at);
    }
}
fs.writeFileSync(path.join(out, 'elpmpp02.bin'), buf);
