// Converts the WMM coefficient files of the geomagnetism package into the program's
// table: little-endian,
//   uint16 count of models, float64 end of the span (decimal year),
//   per model: float64 epoch, float64 first decimal year it is chosen for, uint16 n_max,
//   then for n = 1 .. n_max, m = 0 .. n: int32 g, h, dg, dh in tenths of nT (nT/yr).
// Usage: node convert.js <package dir> <output file>
'use strict';
const fs = require('fs');
const path = require('path');

const [pkg, out] = process.argv.slice(2);
const SPAN_END = 2030.0;
// Each model is chosen from its own epoch, but WMM2015v2 replaces WMM2015 from its
// release date.
const models = [
    {file: 'wmm-2015.json', from: null},
    {file: 'wmm-2015v2.json', from: 'start_date'},
    {file: 'wmm-2020.json', from: null},
    {file: 'wmm-2025.json', from: null},
];

function decimalYear(iso) {
    const d = new Date(iso);
    const y = d.getUTCFullYear();
    const t0 = Date.UTC(y, 0, 1);
    const t1 = Date.UTC(y + 1, 0, 1);
    return y + (d.getTime() - t0) / (t1 - t0);
}

function tenths(x, what) {
    const t = Math.round(x * 10);
    if (Math.abs(t - x * 10) > 1e-6) throw new Error(`${what}: ${x} is not in tenths`);
    return t;
}

const parts = [];
const head = Buffer.alloc(10);
head.writeUInt16LE(models.length, 0);
head.writeDoubleLE(SPAN_END, 2);
parts.push(head);
for (const m of models) {
    const j = JSON.parse(fs.readFileSync(path.join(pkg, 'data', m.file), 'utf8'));
    const from = m.from ? decimalYear(j[m.from]) : j.epoch;
    const nMax = j.n_max;
    const h = Buffer.alloc(18);
    h.writeDoubleLE(j.epoch, 0);
    h.writeDoubleLE(from, 8);
    h.writeUInt16LE(nMax, 16);
    parts.push(h);
    for (let n = 1; n <= nMax; n++) {
        for (let k = 0; k <= n; k++) {
            const i = n * (n + 1) / 2 + k;
            const b = Buffer.alloc(16);
            b.writeInt32LE(tenths(j.main_field_coeff_g[i], m.file), 0);
            b.writeInt32LE(tenths(j.main_field_coeff_h[i], m.file), 4);
            b.writeInt32LE(tenths(j.secular_var_coeff_g[i], m.file), 8);
            b.writeInt32LE(tenths(j.secular_var_coeff_h[i], m.file), 12);
            parts.push(b);
        }
    }
}
fs.writeFileSync(out, Buffer.concat(parts));
