// Loads a raw-info file exported by P.L.A.X, runs it for one simulated second
// and prints where every body is:
//
//     plax -i examples/demo.plax -e demo.json
//     node runtime/js/examples/print_positions.mjs demo.json
//
// Each line is "<name> <x> <y> <angle>"; unnamed bodies are shown by their
// position in the file as "#<index>".
import { readFileSync } from 'node:fs';

import { loadScene, RawInfoError } from '../plax-runtime.mjs';

if (process.argv.length !== 3) {
  console.error('usage: node print_positions.mjs <raw-info.json>');
  process.exit(2);
}
let scene;
try {
  scene = loadScene(readFileSync(process.argv[2], 'utf8'));
} catch (e) {
  console.error(e instanceof RawInfoError ? e.message : String(e));
  process.exit(1);
}
// One second at the rate the scene was made for.
const steps = Math.round(Math.max(1, scene.settings.stepsPerSecond));
for (let i = 0; i < steps; ++i) scene.step();

console.log(`after ${steps} steps:`);
scene.bodies.forEach((body, i) => {
  const name = scene.name(body) || `#${i}`;
  const p = body.getPosition();
  console.log(`${name} ${p.x.toFixed(4)} ${p.y.toFixed(4)} ${body.getAngle().toFixed(4)}`);
});
