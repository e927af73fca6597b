// Builds the atlas's constellation tables from the western sky culture and the IAU
// boundaries of stellarium-data. Run by tools/constellations/generate; the output depends
// only on the input files, so that a second run gives the same bytes.
//
// Tables written (little-endian, no header):
//   constellation_lines.bin       figure lines: pairs of star indices, two int32 a line,
//                                 in the order of constellationship.fab
//   constellation_bounds.bin      boundary polylines: uint16 point count, then the points
//                                 as float32 RA and Dec in radians, J2000
'use strict';
const fs = require('fs');
const path = require('path');

const args = {};
for (let i = 2; i < process.argv.length; i += 2) args[process.argv[i].slice(2)] = process.argv[i + 1];
const fail = (msg) => { console.error('constellations: ' + msg); process.exit(1); };

// Star index by Hipparcos number, from the catalogue's own number table (one int32 a star
// index over all tiers); the brighter star where two share a number.
const hipBytes = fs.readFileSync(path.join(args.data, 'star_hip_numbers.bin'));
const starOfHip = new Map();
for (let s = 0; s < hipBytes.length / 4; ++s) {
    const hip = hipBytes.readInt32LE(4 * s);
    if (hip > 0 && !starOfHip.has(hip)) starOfHip.set(hip, s);
}

// ---------------------------------------------------------------- figures
const lines = [];
let highest = 0;
const ship = fs.readFileSync(path.join(args.stellarium, 'skycultures/western/constellationship.fab'), 'utf8');
for (const row of ship.split('\n')) {
    const f = row.trim().split(/\s+/);
    if (f.length < 2 || row.startsWith('#')) continue;
    const n = Number(f[1]);
    if (f.length !== 2 + 2 * n) fail('bad figure row ' + f[0]);
    for (let k = 0; k < n; ++k) {
        const a = starOfHip.get(Number(f[2 + 2 * k]));
        const b = starOfHip.get(Number(f[3 + 2 * k]));
        if (a === undefined || b === undefined) fail('figure star not in the catalogue: ' + f[0]);
        lines.push([a, b]);
        highest = Math.max(highest, a, b);
    }
}
const lineBuf = Buffer.alloc(8 * lines.length);
lines.forEach(([a, b], i) => { lineBuf.writeInt32LE(a, 8 * i); lineBuf.writeInt32LE(b, 8 * i + 4); });
fs.writeFileSync(path.join(args.data, 'constellation_lines.bin'), lineBuf);

// ---------------------------------------------------------------- boundaries
const tokens = fs.readFileSync(path.join(args.stellarium, 'data/constellation_boundaries.dat'), 'utf8')
    .split(/\s+/).filter((t) => t);
const parts = [];
for (let i = 0; i < tokens.length;) {
    const n = Number(tokens[i++]);
    const pts = [];
    for (let k = 0; k < n; ++k, i += 2)
        pts.push([Number(tokens[i]) * Math.PI / 12, Number(tokens[i + 1]) * Math.PI / 180]);
    const m = Number(tokens[i++]);
    i += m;
    if (!(n > 0) || !(m >= 0)) fail('bad boundary record');
    parts.push(pts);
}
let size = 0;
for (const p of parts) size += 2 + 8 * p.length;
const boundBuf = Buffer.alloc(size);
let at = 0;
for (const p of parts) {
    boundBuf.writeUInt16LE(p.length, at); at += 2;
    for (const [ra, dec] of p) { boundBuf.writeFloatLE(ra, at); boundBuf.writeFloatLE(dec, at + 4); at += 8; }
}
fs.writeFileSync(path.join(args.data, 'constellation_bounds.bin'), boundBuf);

fs.writeFileSync(path.join(args.data, 'constellations.sources.txt'),
    args.sources.split(';').join('\n') + '\n');
console.log(`${lines.length} figure lines (highest star ${highest}), ${parts.length} boundary lines`);
