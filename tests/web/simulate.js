// node simulate.js PAGE INPUT FRAMES: runs a match from an input file with the program of a page, without a browser, and
// prints what it prints. FRAMES 0: four pilots to the end of the match.
'use strict';

const fs = require('fs');
const path = require('path');
const vm = require('vm');

const [page, input, frames] = process.argv.slice(2);
const manifest = JSON.parse(fs.readFileSync(path.join(page, 'manifest.json')));
const data = fs.readFileSync(path.join(page, 'game.data'));

function place(name, bytes) {
  name.split('/').slice(0, -1).reduce((folder, part) => {
    const inner = folder + '/' + part;
    if (part !== '' && !FS.analyzePath(inner).exists) FS.mkdir(inner);
    return part === '' ? folder : inner;
  }, '');
  FS.writeFile(name, bytes);
}

globalThis.require = require;
globalThis.__dirname = page;
globalThis.Module = {
  wasmBinary: fs.readFileSync(path.join(page, 'brinewhirl.wasm')),
  arguments: ['simulate', input === '' ? '' : '/input', frames],
  preRun: [() => {
    for (const {name, start, end} of manifest.index) place('/game/' + name, data.subarray(start, end));
    if (input !== '') FS.writeFile('/input', fs.readFileSync(input));
  }],
};
vm.runInThisContext(fs.readFileSync(path.join(page, 'brinewhirl.js'), 'utf8'));
