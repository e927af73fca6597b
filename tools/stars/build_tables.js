// Builds the star catalogue tables from the Hipparcos stars of d3-celestial and the star
// data of stellarium-data. Run by tools/stars/generate; the output depends only on the
// input files, so that a second run gives the same bytes.
//
// Tables written (all little-endian, no header):
//   stars_base.bin           catalogue rows 0 .. kBaseTierEnd, 20 bytes a row (built in)
//   stars_tier2.bin ..4.bin  the rows of the deeper tiers (data files loaded on demand)
//   star_designations.bin    12-byte designation rows, ascending by star
//   star_variables.bin       20-byte variable rows, by constellation and designation order
//   star_constellation_counts.bin  89 rows of three bytes
//   star_all_names.txt / star_all_name_links.bin    every name of a star, Windows-1252
//   star_main_names.txt / star_main_name_links.bin  one name a star
//   star_nav_names.txt / star_nav_links.bin         the 58 navigational stars
//   star_main_bodies.bin     the bodies of the main list
//   constellation_abbrevs.txt, constellation_names.txt, constellation_label_widths.bin
//   star_hd_numbers.bin, star_hip_numbers.bin        by star index, on demand
'use strict';
const fs = require('fs');
const path = require('path');

const args = {};
for (let i = 2; i < process.argv.length; i += 2) args[process.argv[i].slice(2)] = process.argv[i + 1];
const fail = (msg) => { console.error('build_tables: ' + msg); process.exit(1); };

const readJson = (p) => JSON.parse(fs.readFileSync(p, 'utf8'));
const readLines = (p) => fs.readFileSync(p, 'utf8').split('\n');

// ---------------------------------------------------------------- the catalogue order
const stars14 = readJson(path.join(args.d3, 'data/stars.14.json'));
const starnames = readJson(path.join(args.d3, 'data/starnames.json'));
const stellariumStars = path.join(args.stellarium, 'stars/default');

const DEG = Math.PI / 180;
const MAS = DEG / 3600000;

const pm = new Map();  // HIP -> [pmRA cos Dec, pmDec] in mas/yr
for (const line of readLines(path.join(stellariumStars, 'hip_pm.dat'))) {
    if (line.startsWith('#') || !line.trim()) continue;
    const f = line.trim().split(/\s+/);
    pm.set(Number(f[0]), [Number(f[1]), Number(f[2])]);
}

const stars = stars14.features.map((f) => {
    let ra = f.geometry.coordinates[0];
    if (ra < 0) ra += 360;
    return { hip: Number(f.id), mag: Math.round(f.properties.mag * 1000), ra: ra * DEG,
             dec: f.geometry.coordinates[1] * DEG };
});
stars.sort((a, b) => a.mag - b.mag || a.hip - b.hip);

const FIRST_STAR = 12;
const indexOfHip = new Map();
stars.forEach((s, i) => { s.index = FIRST_STAR + i; indexOfHip.set(s.hip, s.index); });
const lastIndex = FIRST_STAR + stars.length - 1;
const lastBelow = (limit) => {
    let last = FIRST_STAR - 1;
    for (const s of stars) if (s.mag < limit) last = s.index;
    return last;
};
const baseEnd = lastBelow(7000), tier2End = lastBelow(8000), tier3End = lastBelow(9000);
if (stars[0].hip !== 32349) fail('Sirius is not the brightest star');

// ---------------------------------------------------------------- constellations
const constFeatures = readJson(path.join(args.d3, 'data/constellations.json')).features;
const abbrevs = [' '], fullNames = [' '];
for (const f of constFeatures) {
    const ab = f.properties.desig;
    if (abbrevs.includes(ab)) continue;  // Serpens comes in two parts
    abbrevs.push(ab);
    fullNames.push(ab === 'Ser' ? 'Serpens' : f.properties.name);
}
if (abbrevs.length !== 89) fail('expected 88 constellations, found ' + (abbrevs.length - 1));
const constOf = new Map(abbrevs.map((a, i) => [a, i]));
const SUSPECTED = 89;

// ---------------------------------------------------------------- text encoding
// Windows-1252 for the name lists; the 0x80..0x9F block differs from Latin-1.
const CP1252_HIGH = '\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160' +
    '\u2039\u0152\u008D\u017D\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC' +
    '\u2122\u0161\u203A\u0153\u009D\u017E\u0178';
function cp1252(text) {
    const out = [];
    for (const ch of text) {
        const c = ch.codePointAt(0);
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) { out.push(c); continue; }
        const k = CP1252_HIGH.indexOf(ch);
        if (k >= 0) { out.push(0x80 + k); continue; }
        const plain = ch.normalize('NFD').replace(/[\u0300-\u036f]/g, '');
        if (plain.length === 1 && plain.codePointAt(0) < 0x80) { out.push(plain.codePointAt(0)); continue; }
        return null;
    }
    return Buffer.from(out);
}
// The text as it reads back from Windows-1252, which is what the program compares.
const asStored = (text) => { const b = cp1252(text); return b && Array.from(b, (c) => (c >= 0x80 && c < 0xA0) ? CP1252_HIGH[c - 0x80] : String.fromCharCode(c)).join(''); };

// Name order: ASCII letters folded to lower case, compared by UTF-8 bytes, then unfolded.
const fold = (s) => s.replace(/[A-Z]/g, (c) => c.toLowerCase());
const byteCompare = (a, b) => Buffer.compare(Buffer.from(a, 'utf8'), Buffer.from(b, 'utf8'));
const nameCompare = (a, b) => byteCompare(fold(a), fold(b)) || byteCompare(a, b);

// ---------------------------------------------------------------- navigational stars
// The 57 stars of the nautical almanac and Polaris, by almanac name, with their
// Hipparcos number and the designation that the stellarium data must give them.
const NAV = [
    ['Acamar', 13847, 'θ1_Eri'], ['Achernar', 7588, 'α_Eri'], ['Acrux', 60718, 'α1_Cru'],
    ['Adhara', 33579, 'ε_CMa'], ['Aldebaran', 21421, 'α_Tau'], ['Alioth', 62956, 'ε_UMa'],
    ['Alkaid', 67301, 'η_UMa'], ['Alnair', 109268, 'α_Gru'], ['Alnilam', 26311, 'ε_Ori'],
    ['Alphard', 46390, 'α_Hya'], ['Alphecca', 76267, 'α_CrB'], ['Alpheratz', 677, 'α_And'],
    ['Altair', 97649, 'α_Aql'], ['Ankaa', 2081, 'α_Phe'], ['Antares', 80763, 'α_Sco'],
    ['Arcturus', 69673, 'α_Boo'], ['Atria', 82273, 'α_TrA'], ['Avior', 41037, 'ε_Car'],
    ['Bellatrix', 25336, 'γ_Ori'], ['Betelgeuse', 27989, 'α_Ori'], ['Canopus', 30438, 'α_Car'],
    ['Capella', 24608, 'α_Aur'], ['Deneb', 102098, 'α_Cyg'], ['Denebola', 57632, 'β_Leo'],
    ['Diphda', 3419, 'β_Cet'], ['Dubhe', 54061, 'α_UMa'], ['Elnath', 25428, 'β_Tau'],
    ['Eltanin', 87833, 'γ_Dra'], ['Enif', 107315, 'ε_Peg'], ['Fomalhaut', 113368, 'α_PsA'],
    ['Gacrux', 61084, 'γ_Cru'], ['Gienah', 59803, 'γ_Crv'], ['Hadar', 68702, 'β_Cen'],
    ['Hamal', 9884, 'α_Ari'], ['Kaus Aust.', 90185, 'ε_Sgr'], ['Kochab', 72607, 'β_UMi'],
    ['Markab', 113963, 'α_Peg'], ['Menkar', 14135, 'α_Cet'], ['Menkent', 68933, 'θ_Cen'],
    ['Miaplacidus', 45238, 'β_Car'], ['Mirfak', 15863, 'α_Per'], ['Nunki', 92855, 'σ_Sgr'],
    ['Peacock', 100751, 'α_Pav'], ['Polaris', 11767, 'α_UMi'], ['Pollux', 37826, 'β_Gem'],
    ['Procyon', 37279, 'α_CMi'], ['Rasalhague', 86032, 'α_Oph'], ['Regulus', 49669, 'α_Leo'],
    ['Rigel', 24436, 'β_Ori'], ['Rigil Kent', 71683, 'α1_Cen'], ['Sabik', 84012, 'η_Oph'],
    ['Schedar', 3179, 'α_Cas'], ['Shaula', 85927, 'λ_Sco'], ['Sirius', 32349, 'α_CMa'],
    ['Spica', 65474, 'α_Vir'], ['Suhail', 44816, 'λ_Vel'], ['Vega', 91262, 'α_Lyr'],
    ["Zuben'ubi", 72622, 'α2_Lib'],
];

// ---------------------------------------------------------------- designations
const GREEK = 'αβγδεζηθικλμνξοπρστυφχψω';
const GREEK_CODE = 'abgdezhqiklmnxoprstufcyw';

const fabDesig = new Map();  // HIP -> list of designations in file order
for (const line of readLines(path.join(stellariumStars, 'name.fab'))) {
    const m = line.match(/^\s*(\d+)\|(\S+)\s*$/);
    if (!m) continue;
    const hip = Number(m[1]);
    if (!fabDesig.has(hip)) fabDesig.set(hip, []);
    fabDesig.get(hip).push(m[2]);
}
for (const [name, hip, desig] of NAV) {
    if (!(fabDesig.get(hip) || []).includes(desig)) fail(`${name}: HIP ${hip} is not ${desig}`);
}

// A Bayer designation "α1" -> {letter, index, greek}; null if it cannot be coded.
function parseBayer(text) {
    const m = text.match(/^(\D)(\d*)$/u);
    if (!m) return null;
    const g = GREEK.indexOf(m[1]);
    const latin = /^[A-Za-z]$/.test(m[1]);
    if (g < 0 && !latin) return null;
    if (m[2].length > 1 || m[2] === '0') return null;  // a single superscript digit only
    return { letter: g >= 0 ? GREEK_CODE[g] : m[1], index: m[2] || ' ', greek: g >= 0 };
}

const desigOfHip = new Map();  // HIP -> {bayer, flam, constellation}
function addDesignation(hip, bayerText, flamText, abbr) {
    const k = constOf.get(abbr);
    if (!k || !indexOfHip.has(hip)) return;
    let d = desigOfHip.get(hip);
    if (!d) { d = { bayer: null, flam: 0, constellation: k }; desigOfHip.set(hip, d); }
    if (d.constellation !== k) return;
    if (bayerText && !d.bayer) d.bayer = parseBayer(bayerText);
    const n = Number(flamText);
    if (flamText && Number.isInteger(n) && n > 0 && n < 256 && !d.flam) d.flam = n;
}
for (const hip of [...fabDesig.keys()].sort((a, b) => a - b)) {
    for (const text of fabDesig.get(hip)) {
        const [body, abbr] = text.split('_');
        if (/^\d+$/.test(body)) addDesignation(hip, null, body, abbr);
        else addDesignation(hip, body, null, abbr);
    }
}
for (const key of Object.keys(starnames).sort((a, b) => a - b)) {
    const hip = Number(key), e = starnames[key];
    if (fabDesig.has(hip) || !e.c) continue;
    addDesignation(hip, e.bayer, e.flam, e.c);
}
for (const [hip, d] of [...desigOfHip]) if (!d.bayer && !d.flam) desigOfHip.delete(hip);

const desigRows = [...desigOfHip].map(([hip, d]) => ({ star: indexOfHip.get(hip), ...d }));
desigRows.sort((a, b) => a.star - b.star);
// The place of each row in its constellation's Bayer list (Greek order, then Latin lower
// case, then upper case, each by superscript) and Flamsteed list (by number).
const bayerKey = (b) => [b.greek ? 0 : (b.letter === b.letter.toLowerCase() ? 1 : 2),
                         b.greek ? GREEK_CODE.indexOf(b.letter) : b.letter.charCodeAt(0),
                         b.index === ' ' ? 0 : Number(b.index)];
const counts = Array.from({ length: 89 }, () => [0, 0, 0]);
for (let k = 1; k <= 88; k++) {
    const rows = desigRows.filter((r) => r.constellation === k);
    const bayer = rows.filter((r) => r.bayer).sort((a, b) => {
        const ka = bayerKey(a.bayer), kb = bayerKey(b.bayer);
        return ka[0] - kb[0] || ka[1] - kb[1] || ka[2] - kb[2] || a.star - b.star;
    });
    bayer.forEach((r, i) => { r.bayerOrder = i + 1; });
    const flam = rows.filter((r) => r.flam).sort((a, b) => a.flam - b.flam || a.star - b.star);
    flam.forEach((r, i) => { r.flamOrder = i + 1; });
    counts[k] = [rows.length, bayer.length, flam.length];
    if (bayer.length > 255 || flam.length > 255) fail('a constellation list is too long');
}

// ---------------------------------------------------------------- variables
// Sequence number of a variable-star designation: R..Z, RR..ZZ, AA..QZ (J left out), V335..
const VAR_LETTERS = 'ABCDEFGHIKLMNOPQRSTUVWXYZ';
const varSequence = new Map();
{
    let n = 0;
    for (const c of 'RSTUVWXYZ') varSequence.set(c, ++n);
    const pairsFrom = (first, last) => {
        for (let i = VAR_LETTERS.indexOf(first); i <= VAR_LETTERS.indexOf(last); i++)
            for (let j = i; j < VAR_LETTERS.length; j++)
                varSequence.set(VAR_LETTERS[i] + VAR_LETTERS[j], ++n);
    };
    pairsFrom('R', 'Z');
    pairsFrom('A', 'Q');
}
// A variable known by its Bayer letter ("α Ori", "i Boo") keeps the letter and stands
// before the lettered variables of its constellation, in the order of the alphabet.
function varDesig(text) {  // "V0822" -> "V 822", letters as they are; null if not a designation
    const g = GREEK.indexOf(text);
    if (text.length === 1 && g >= 0) return { text: text.padEnd(5, ' '), seq: -100 + g };
    if (/^[a-zA-Z]$/.test(text) && !varSequence.has(text))
        return { text: text.padEnd(5, ' '), seq: -50 + text.charCodeAt(0) - 65 };
    const v = text.match(/^V(\d+)$/);
    if (v) {
        const num = Number(v[1]);
        return num > 9999 ? null : { text: 'V' + String(num).padStart(4, ' '), seq: num };
    }
    if (!varSequence.has(text)) return null;
    return { text: text.padEnd(5, ' '), seq: varSequence.get(text) };
}

const varRows = [];
const hasVar = new Map();  // star index -> 'V' or 'v'
for (const line of readLines(path.join(stellariumStars, 'gcvs_hip_part.dat'))) {
    const f = line.split('\t');
    if (f.length < 6 || line.startsWith('#')) continue;
    const hip = Number(f[0]), star = indexOfHip.get(hip);
    const m = f[1].trim().match(/^(\S+)\s+(\S+)$/);
    if (!star || !m || !constOf.has(m[2])) continue;
    const d = varDesig(m[1]);
    if (!d) continue;
    const bright = parseFloat(f[3]), faint = parseFloat(f[5]);
    const range = Number.isFinite(bright) && Number.isFinite(faint) && faint > bright ?
        Math.min(32767, Math.round((faint - bright) * 100)) : 0;
    varRows.push({ star, range, desig: d.text, seq: d.seq, constellation: constOf.get(m[2]), kind: 0 });
    hasVar.set(star, 'V');
}
for (const key of Object.keys(starnames).sort((a, b) => a - b)) {
    const star = indexOfHip.get(Number(key)), v = (starnames[key].var || '').trim();
    if (!star || !v || hasVar.has(star)) continue;
    const nsv = v.match(/^NSV\s+(\d{1,5})$/);
    if (nsv) {
        varRows.push({ star, range: 0, desig: nsv[1].padEnd(5, ' '), seq: Number(nsv[1]),
                       constellation: SUSPECTED, kind: 78 });
        hasVar.set(star, 'v');
        continue;
    }
    const abbr = starnames[key].c, d = varDesig(v);
    if (!d || !constOf.has(abbr)) continue;
    varRows.push({ star, range: 0, desig: d.text, seq: d.seq, constellation: constOf.get(abbr), kind: 0 });
    hasVar.set(star, 'V');
}
varRows.sort((a, b) => a.constellation - b.constellation || a.seq - b.seq || a.star - b.star);

// ---------------------------------------------------------------- names
const properNames = new Map();  // HIP -> names in file order
for (const line of readLines(path.join(args.stellarium, 'skycultures/western/star_names.fab'))) {
    const m = line.match(/^\s*(\d+)\|_\("([^"]+)"\)/);
    if (!m) continue;
    const hip = Number(m[1]);
    if (!properNames.has(hip)) properNames.set(hip, []);
    properNames.get(hip).push(m[2].trim());
}
for (const key of Object.keys(starnames).sort((a, b) => a - b)) {
    const hip = Number(key), name = (starnames[key].name || '').trim();
    if (!name) continue;
    if (!properNames.has(hip)) properNames.set(hip, []);
    if (!properNames.get(hip).includes(name)) properNames.get(hip).push(name);
}
const navOfHip = new Map(NAV.map(([name, hip]) => [hip, name]));

const mainNames = [], allNames = [];
const seenAll = new Set();
const addAll = (name, star) => {
    const stored = asStored(name);
    if (!stored || stored.includes(';') || seenAll.has(stored + '\u0000' + star)) return;
    seenAll.add(stored + '\u0000' + star);
    allNames.push({ name: stored, star });
};
for (const s of stars) {
    const names = (properNames.get(s.hip) || []).filter((n) => asStored(n) && !n.includes(';'));
    const nav = navOfHip.get(s.hip);
    const main = nav || names[0];
    if (!main) continue;
    mainNames.push({ name: asStored(main), star: s.index });
    if (nav) addAll(nav, s.index);
    for (const n of names) addAll(n, s.index);
}
const byName = (a, b) => nameCompare(a.name, b.name) || a.star - b.star;
mainNames.sort(byName);
allNames.sort(byName);
const mainNameOf = new Map(mainNames.map((r) => [r.star, r.name]));

const navRows = NAV.map(([name, hip]) => ({ name, star: indexOfHip.get(hip) }));
const navSorted = [...navRows].sort((a, b) => (a.name < b.name ? -1 : a.name > b.name ? 1 : 0));
const navByIndex = navRows.map((r) => r.star).sort((a, b) => a - b);
const mainBodies = [0, 2, 4, 5, 6, 7, 8, ...navByIndex];

// ---------------------------------------------------------------- catalogue rows
const desigStars = new Set(desigRows.map((r) => r.star));
function catalogueRows(first, last) {
    const buf = Buffer.alloc((last - first + 1) * 20);
    for (let i = first; i <= last; i++) {
        const o = (i - first) * 20;
        if (i < FIRST_STAR) {
            buf.writeUInt8(32, o + 18);
            buf.writeUInt8(i === 0 ? 78 : 0, o + 19);
            continue;
        }
        const s = stars[i - FIRST_STAR];
        const [pmRa, pmDec] = pm.get(s.hip) || [0, 0];
        buf.writeFloatLE(s.ra, o);
        buf.writeFloatLE(s.dec, o + 4);
        buf.writeFloatLE(pmRa * MAS / Math.cos(s.dec), o + 8);
        buf.writeFloatLE(pmDec * MAS, o + 12);
        buf.writeInt16LE(s.mag, o + 16);
        buf.writeUInt8((hasVar.get(i) || ' ').charCodeAt(0), o + 18);
        buf.writeUInt8(mainNameOf.has(i) ? 78 : desigStars.has(i) ? 68 : 0, o + 19);
    }
    return buf;
}

// ---------------------------------------------------------------- label widths
// Advance widths of DejaVu Sans, read from the font's cmap (format 4) and hmtx tables.
const LABEL_FONT_PIXELS = 11;
function labelWidths(fontFile, texts) {
    const f = fs.readFileSync(fontFile);
    const tables = new Map();
    for (let i = 0, n = f.readUInt16BE(4); i < n; i++) {
        const o = 12 + 16 * i;
        tables.set(f.toString('latin1', o, o + 4), f.readUInt32BE(o + 8));
    }
    const unitsPerEm = f.readUInt16BE(tables.get('head') + 18);
    const numHMetrics = f.readUInt16BE(tables.get('hhea') + 34);
    const hmtx = tables.get('hmtx'), cmap = tables.get('cmap');
    let sub = -1;
    for (let i = 0, n = f.readUInt16BE(cmap + 2); i < n; i++) {
        const o = cmap + 4 + 8 * i;
        if (f.readUInt16BE(o) === 3 && f.readUInt16BE(o + 2) === 1) sub = cmap + f.readUInt32BE(o + 4);
    }
    if (sub < 0 || f.readUInt16BE(sub) !== 4) fail('font has no Unicode BMP cmap');
    const segs = f.readUInt16BE(sub + 6) / 2;
    const ends = sub + 14, starts = ends + 2 * segs + 2, deltas = starts + 2 * segs, ranges = deltas + 2 * segs;
    const glyph = (c) => {
        for (let i = 0; i < segs; i++) {
            if (c > f.readUInt16BE(ends + 2 * i)) continue;
            const start = f.readUInt16BE(starts + 2 * i);
            if (c < start) return 0;
            const delta = f.readInt16BE(deltas + 2 * i), ro = f.readUInt16BE(ranges + 2 * i);
            if (ro === 0) return (c + delta) & 0xFFFF;
            const g = f.readUInt16BE(ranges + 2 * i + ro + 2 * (c - start));
            return g === 0 ? 0 : (g + delta) & 0xFFFF;
        }
        return 0;
    };
    const advance = (g) => f.readUInt16BE(hmtx + 4 * Math.min(g, numHMetrics - 1));
    return texts.map((t) => {
        let units = 0;
        for (const ch of t) units += advance(glyph(ch.codePointAt(0)));
        return Math.round(units * LABEL_FONT_PIXELS / unitsPerEm);
    });
}

// ---------------------------------------------------------------- writing
const out = (name, buf) => fs.writeFileSync(path.join(args.data, name), buf);
const int32s = (values) => { const b = Buffer.alloc(4 * values.length); values.forEach((v, i) => b.writeInt32LE(v, 4 * i)); return b; };
const nameList = (rows) => Buffer.concat([Buffer.from(';'), ...rows.map((r, i) => Buffer.concat([cp1252(r.name), Buffer.from(i + 1 < rows.length ? ';' : '')]))]);

out('stars_base.bin', catalogueRows(0, baseEnd));
out('stars_tier2.bin', catalogueRows(baseEnd + 1, tier2End));
out('stars_tier3.bin', catalogueRows(tier2End + 1, tier3End));
out('stars_tier4.bin', catalogueRows(tier3End + 1, lastIndex));

{
    const b = Buffer.alloc(12 * desigRows.length);
    desigRows.forEach((r, i) => {
        const o = 12 * i;
        b.writeInt32LE(r.star, o);
        b.writeUInt8(r.constellation, o + 4);
        b.writeUInt8(r.bayerOrder || 0, o + 5);
        b.writeUInt8(r.flamOrder || 0, o + 6);
        b.write(r.bayer ? r.bayer.letter : ' ', o + 7, 'latin1');
        b.write(r.bayer ? r.bayer.index : ' ', o + 8, 'latin1');
        b.write(' ', o + 9, 'latin1');
        b.writeUInt8(r.flam, o + 10);
        b.writeUInt8(r.bayer && r.bayer.greek ? 1 : 0, o + 11);
    });
    out('star_designations.bin', b);
}
{
    const b = Buffer.alloc(20 * varRows.length);
    varRows.forEach((r, i) => {
        const o = 20 * i;
        b.writeInt32LE(r.star, o);
        b.writeInt16LE(r.range, o + 4);
        for (let c = 0; c < 5; c++) b.writeUInt16LE(r.desig.charCodeAt(c), o + 6 + 2 * c);
        b.writeUInt8(r.constellation, o + 16);
        b.writeUInt8(r.kind, o + 17);
    });
    out('star_variables.bin', b);
}
out('star_constellation_counts.bin', Buffer.from(counts.flat()));
out('star_all_names.txt', nameList(allNames));
out('star_all_name_links.bin', int32s(allNames.map((r) => r.star)));
out('star_main_names.txt', nameList(mainNames));
out('star_main_name_links.bin', int32s(mainNames.map((r) => r.star)));
out('star_nav_names.txt', nameList(navSorted));
out('star_nav_links.bin', int32s(navSorted.map((r) => r.star)));
out('star_main_bodies.bin', int32s(mainBodies));
out('constellation_abbrevs.txt', Buffer.from(abbrevs.join(';'), 'latin1'));
out('constellation_names.txt', Buffer.concat(fullNames.map((n, i) => Buffer.concat([cp1252(n), Buffer.from(i < 88 ? ';' : '')]))));
const widths = labelWidths(args.font, fullNames.map((n, i) => (i === 0 ? '' : n)));
out('constellation_label_widths.bin', int32s(widths));
const [coronaAustralisWidth] = labelWidths(args.font, ['Corona Australis']);

// Catalogue numbers by star index, over all tiers.
const hdOfHip = new Map();
for (const line of readLines(path.join(stellariumStars, 'cross-id.dat'))) {
    if (line.startsWith('#')) continue;
    const f = line.split('\t');
    const hip = Number(f[0]), hd = Number(f[3]);
    if (hip > 0 && hd > 0 && !hdOfHip.has(hip)) hdOfHip.set(hip, hd);
}
for (const key of Object.keys(starnames).sort((a, b) => a - b)) {
    const m = (starnames[key].hd || '').match(/^HD\s*(\d+)$/);
    if (m && !hdOfHip.has(Number(key))) hdOfHip.set(Number(key), Number(m[1]));
}
const byIndex = (f) => { const v = new Array(lastIndex + 1).fill(0); for (const s of stars) v[s.index] = f(s); return v; };
out('star_hd_numbers.bin', int32s(byIndex((s) => hdOfHip.get(s.hip) || 0)));
out('star_hip_numbers.bin', int32s(byIndex((s) => s.hip)));

// ---------------------------------------------------------------- constants and sources
const maxHd = Math.max(...hdOfHip.values());
const maxHip = Math.max(...stars.map((s) => s.hip));
const mainBeyond = mainNames.filter((r) => r.star > baseEnd).length;
const mainDirectEnd = Math.max(...mainNames.filter((r) => r.star <= baseEnd).map((r) => r.star));
const faintestMain = Math.max(...navByIndex);
const header = `// Generated by tools/stars/generate from the star data: do not edit.
// The cut-off rows of the star catalogue (brightest first) and the sizes of its tables.
#pragma once

#include <cstdint>

namespace kelmoran {

// Highest star index of each magnitude limit: the last star brighter than the limit.
inline constexpr int32_t kMag3_5End = ${lastBelow(3500)};
inline constexpr int32_t kMag4End = ${lastBelow(4000)};
inline constexpr int32_t kMag5End = ${lastBelow(5000)};
inline constexpr int32_t kMag6End = ${lastBelow(6000)};
// Ends of the tiers: the base tier (brighter than 7) is built in, the others are files.
inline constexpr int32_t kBaseTierEnd = ${baseEnd};
inline constexpr int32_t kTier2End = ${tier2End};
inline constexpr int32_t kTier3End = ${tier3End};
inline constexpr int32_t kTier4End = ${lastIndex};
// The faintest of the navigational stars: the highest index of the main-star table.
inline constexpr int32_t kFaintestMainStar = ${faintestMain};
// Main names of stars up to this index are found directly; the ${mainBeyond} beyond it by scan.
inline constexpr int32_t kMainNameDirectEnd = ${mainDirectEnd};
inline constexpr int32_t kMainNameOverflow = ${mainBeyond};
// Highest HD and Hipparcos numbers of the catalogue: the sizes of the inverse tables.
inline constexpr int32_t kHighestHD = ${maxHd};
inline constexpr int32_t kHighestHip = ${maxHip};
// Label width in pixels of "Corona Australis" in the atlas label font.
inline constexpr int32_t kCoronaAustralisLabelWidth = ${coronaAustralisWidth};

}  // namespace kelmoran
`;
fs.writeFileSync(args.header, header);

const sources = ['# Star catalogue tables: packages read by tools/stars/generate', ...args.sources.split(';'),
    `# ${stars.length} stars; base tier rows 0..${baseEnd}; ${desigRows.length} designations; ` +
    `${varRows.length} variables; ${mainNames.length} main names; ${allNames.length} names; ` +
    `label font DejaVu Sans ${LABEL_FONT_PIXELS} px`, ''];
fs.writeFileSync(path.join(args.data, 'stars.sources.txt'), sources.join('\n'));
console.log(sources.slice(1, -1).join('\n'));
