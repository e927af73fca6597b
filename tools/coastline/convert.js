// Turns the Natural Earth land polygons of world-atlas's land-50m.json (TopoJSON) into the
// program's coastline table: every ring of every land polygon as a run of points in
// hundredths of a degree.
//
// Table layout, little-endian:
//   uint32 ring count
//   per ring: uint32 point count, then per point int16 longitude, int16 latitude
//             (hundredths of a degree, east and north positive; the ring is closed, its
//             last point joins its first without being repeated)
// Rings are written in the order of the TopoJSON geometry; points that round to the same
// hundredth as their neighbour are dropped. The polygons of world-atlas are spherical: a
// ring may cross the 180th meridian. Here the longitudes run on continuously round each
// ring (so they may pass ±180), and a ring that goes once round the Earth (Antarctica) is
// closed along its pole, so that every ring is a plain polygon on a Mercator map.
"use strict";
const fs = require("fs");
const [, , input, output] = process.argv;
const topo = JSON.parse(fs.readFileSync(input, "utf8"));
const [sx, sy] = topo.transform.scale;
const [tx, ty] = topo.transform.translate;

// Arcs are delta-coded quantised positions.
const arcs = topo.arcs.map((arc) => {
    let x = 0, y = 0;
    return arc.map(([dx, dy]) => {
        x += dx;
        y += dy;
        return [x * sx + tx, y * sy + ty];
    });
});

function ringPoints(arcIndices) {
    const pts = [];
    for (const i of arcIndices) {
        const arc = i >= 0 ? arcs[i] : arcs[~i].slice().reverse();
        // Arcs of a ring share their end points.
        for (let k = pts.length ? 1 : 0; k < arc.length; k++) pts.push(arc[k]);
    }
    return pts;
}

const rings = [];
for (const geometry of topo.objects.land.geometries) {
    const polygons = geometry.type === "Polygon" ? [geometry.arcs] : geometry.arcs;
    for (const polygon of polygons) {
        for (const ring of polygon) {
            const q = [];
            const pts = ringPoints(ring);
            let previous = null, meanLat = 0;
            const plain = pts.map(([lon, lat]) => {
                if (previous !== null) lon -= 360 * Math.round((lon - previous) / 360);
                previous = lon;
                meanLat += lat;
                return [lon, lat];
            });
            const closing = plain[0][0] - plain[plain.length - 1][0];
            if (Math.abs(closing) > 180) {
                const pole = meanLat >= 0 ? 90 : -90;
                plain.push([plain[plain.length - 1][0], pole], [plain[0][0], pole]);
            }
            // The ring taken whole turns east or west so that its middle lies within ±180.
            let lo = Infinity, hi = -Infinity;
            for (const [lon] of plain) { lo = Math.min(lo, lon); hi = Math.max(hi, lon); }
            const shift = 360 * Math.round((lo + hi) / 2 / 360);
            for (const p of plain) p[0] -= shift;
            for (const [lon, lat] of plain) {
                const p = [Math.round(lon * 100), Math.round(lat * 100)];
                const last = q[q.length - 1];
                if (!last || last[0] !== p[0] || last[1] !== p[1]) q.push(p);
            }
            while (q.length > 1 && q[0][0] === q[q.length - 1][0] && q[0][1] === q[q.length - 1][1])
                q.pop();
            if (q.length >= 3) rings.push(q);
        }
    }
}

let size = 4;
for (const r of rings) size += 4 + r.length * 4;
const buf = Buffer.alloc(size);
let at = buf.writeUInt32LE(rings.length, 0);
for (const r of rings) {
    at = buf.writeUInt32LE(r.length, at);
    for (const [lon, lat] of r) {
        at = buf.writeInt16LE(lon, at);
        at = buf.writeInt16LE(lat, at);
    }
}
fs.writeFileSync(output, buf);
console.log(`${rings.length} rings, ${(size - 4 - 4 * rings.length) / 4} points`);
