// The planck.js world the JavaScript runtime loads agrees with the Box2D
// world the C++ runtime loads from the same `plax -e` export, after 300
// steps, within the stated tolerance. planck computes in double precision
// and keeps Box2D 2.3's solver where Box2D 2.4.1 changed it (springs given
// as frequency and damping ratio, joint limits with motors, two-sided chains),
// so the two worlds drift apart a little: after 300 steps (five seconds) at
// 60 Hz positions agree within POSITION_TOLERANCE metres and angles within
// ANGLE_TOLERANCE radians. The scenes land and swing without piles, which
// would make any two engines part chaotically; the largest differences seen
// are about 0.06 m and 0.1 rad, the angle of a wheel its motor turned by
// ten radians.
//
// It runs the real programs named by the environment: PLAX_BINARY (the
// editor, for the exports), PLAX_RUNTIME_TOOL (writes the generated scenes
// and steps exports with the C++ runtime), PLAX_RUNTIME_EXAMPLE (the C++
// example program) and PLAX_SOURCE_DIR (for the example scene). Without them
// the test fails: it never passes without comparing.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { loadScene } from '../plax-runtime.mjs';

export const POSITION_TOLERANCE = 0.1;
export const ANGLE_TOLERANCE = 0.2;
const STEPS = 300;
const GENERATED_SCENES = 3;

function required(name) {
  const value = process.env[name];
  assert.ok(value, `${name} must name the program to compare with (the test runs from CTest, which sets it)`);
  return value;
}

const plax = required('PLAX_BINARY');
const tool = required('PLAX_RUNTIME_TOOL');
const cppExample = required('PLAX_RUNTIME_EXAMPLE');
const sourceDir = required('PLAX_SOURCE_DIR');
const scratch = mkdtempSync(join(tmpdir(), 'plax-runtime-js-'));
const env = { ...process.env, XDG_CONFIG_HOME: join(scratch, 'config'), QT_QPA_PLATFORM: 'offscreen' };
after(() => rmSync(scratch, { recursive: true, force: true }));

function exportScene(scenePath, name) {
  const out = join(scratch, `${name}.json`);
  execFileSync(plax, ['-q', '-i', scenePath, '-e', out], { cwd: scratch, env, stdio: 'pipe' });
  return out;
}

function cppPositions(exportPath, steps) {
  return JSON.parse(execFileSync(tool, ['positions', exportPath, String(steps)], { cwd: scratch, env }).toString());
}

function compare(exportPath, label) {
  const reference = cppPositions(exportPath, STEPS);
  const scene = loadScene(readFileSync(exportPath, 'utf8'));
  for (let i = 0; i < STEPS; ++i) scene.step();
  assert.equal(scene.bodies.length, reference.length, `${label}: body count`);
  assert.ok(reference.length > 5, `${label}: a scene with bodies`);
  let worstPosition = 0;
  let worstAngle = 0;
  let moved = 0;
  scene.bodies.forEach((body, i) => {
    const r = reference[i];
    const p = body.getPosition();
    assert.equal(scene.name(body), r.name, `${label}: body ${i}`);
    const dp = Math.hypot(p.x - r.x, p.y - r.y);
    const da = Math.abs(body.getAngle() - r.angle);
    worstPosition = Math.max(worstPosition, dp);
    worstAngle = Math.max(worstAngle, da);
    assert.ok(dp <= POSITION_TOLERANCE,
      `${label}: body ${i} '${r.name}' at (${p.x}, ${p.y}) in planck, (${r.x}, ${r.y}) in Box2D: ${dp} m apart`);
    assert.ok(da <= ANGLE_TOLERANCE,
      `${label}: body ${i} '${r.name}' angle ${body.getAngle()} in planck, ${r.angle} in Box2D`);
    const start = scene.description.bodies[i].position;
    if (Math.hypot(r.x - start.x, r.y - start.y) > 0.5) ++moved;
  });
  assert.ok(moved >= 3, `${label}: the comparison covers moving bodies`);
  return { worstPosition, worstAngle };
}

test('the example scene agrees with the C++ runtime after 300 steps', (t) => {
  const exported = exportScene(join(sourceDir, 'examples', 'demo.plax'), 'demo');
  const { worstPosition, worstAngle } = compare(exported, 'example scene');
  t.diagnostic(`largest differences: ${worstPosition.toExponential(2)} m, ${worstAngle.toExponential(2)} rad`);
});

test('generated scenes with every shape and joint type agree with the C++ runtime', (t) => {
  execFileSync(tool, ['write-scenes', scratch, String(GENERATED_SCENES)], { cwd: scratch, env });
  for (let seed = 1; seed <= GENERATED_SCENES; ++seed) {
    const exported = exportScene(join(scratch, `generated-${seed}.plax`), `generated-${seed}`);
    const { worstPosition, worstAngle } = compare(exported, `generated scene ${seed}`);
    t.diagnostic(`scene ${seed}: largest differences ${worstPosition.toExponential(2)} m, ${worstAngle.toExponential(2)} rad`);
  }
});

test('the two example programs print the same bodies after one simulated second', () => {
  const exported = exportScene(join(sourceDir, 'examples', 'demo.plax'), 'demo-example');
  const parse = (text) => text.trim().split('\n').slice(1).map((line) => {
    const [name, x, y, angle] = line.split(' ');
    return { name, x: Number(x), y: Number(y), angle: Number(angle) };
  });
  const cpp = parse(execFileSync(cppExample, [exported], { env }).toString());
  const jsExample = fileURLToPath(new URL('../examples/print_positions.mjs', import.meta.url));
  const js = parse(execFileSync(process.execPath, [jsExample, exported], { env }).toString());
  assert.ok(cpp.length > 5);
  assert.deepEqual(js.map((b) => b.name), cpp.map((b) => b.name));
  js.forEach((b, i) => {
    assert.ok(Math.hypot(b.x - cpp[i].x, b.y - cpp[i].y) <= POSITION_TOLERANCE, `${b.name}: ${b.x},${b.y} vs ${cpp[i].x},${cpp[i].y}`);
  });
  assert.ok(cpp.some((b) => b.name === 'ball' && b.y < 7.9), 'the ball fell during the second');
});
