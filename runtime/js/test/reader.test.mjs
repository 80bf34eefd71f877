// The JavaScript reader: value encodings, records, and malformed input
// reported with the JSON pointer of the member at fault.
import assert from 'node:assert/strict';
import { test } from 'node:test';

import { isLoop, RawInfoError, readRawInfo } from '../plax-runtime.mjs';

test('every float encoding the editor writes reads as its single-precision value', () => {
  const scene = readRawInfo(`{"body": [{"angle": "3FC00000", "linearDamping": 1, "angularDamping": 0,
    "gravityScale": 0.1, "angularVelocity": "bf800000", "position": {"x": "40490FDB", "y": -2.5}}]}`);
  const b = scene.bodies[0];
  assert.equal(b.angle, 1.5);
  assert.equal(b.linearDamping, 1);
  assert.equal(b.angularDamping, 0);
  assert.equal(b.gravityScale, Math.fround(0.1), 'a real is the nearest float');
  assert.equal(b.angularVelocity, -1);
  assert.equal(b.position.x, Math.fround(Math.PI));
  assert.equal(b.position.y, -2.5);
});

test('vectors and point lists in both forms, and defaults for missing members', () => {
  const scene = readRawInfo({
    body: [{ position: 0, linearVelocity: { x: 1, y: '40000000' },
      fixture: [{ polygon: { vertices: { x: [0, 1, 1], y: [0, 0, 1] } } },
        { polygon: { vertices: [{ x: 0, y: 0 }, { x: 2, y: 0 }, 0] } }, { circle: {} }] }],
    joint: [{ type: 'wheel', bodyA: 0, bodyB: 0 }],
  });
  const b = scene.bodies[0];
  assert.deepEqual(b.position, { x: 0, y: 0 });
  assert.deepEqual(b.linearVelocity, { x: 1, y: 2 });
  assert.deepEqual(b.fixtures[0].shape.vertices[2], { x: 1, y: 1 });
  assert.deepEqual(b.fixtures[1].shape.vertices[1], { x: 2, y: 0 });
  assert.equal(b.type, 0);
  assert.equal(b.awake, true);
  assert.equal(b.fixtures[2].friction, Math.fround(0.2));
  assert.equal(b.fixtures[2].maskBits, 0xffff);
  assert.deepEqual(scene.world.gravity, { x: 0, y: -10 });
  assert.equal(scene.world.stepsPerSecond, 60);
  assert.deepEqual(scene.joints[0].values.localAxisA, { x: 1, y: 0 });
});

test('reads every record kind with custom properties', () => {
  const scene = readRawInfo(`{
    "stepsPerSecond": 30, "collisionbitplanes": {"names": ["ground", "hero"]},
    "customProperties": [{"name": "level", "int": 4}],
    "body": [{"name": "ground"}, {"name": "hero", "type": 2, "massData-mass": 2, "massData-I": 3,
      "customProperties": [{"name": "lives", "int": 3}, {"name": "speed", "float": 2.5},
        {"name": "title", "string": "Bob"}, {"name": "aim", "vec2": {"x": 1, "y": 2}}, {"name": "brave", "bool": true},
        {"name": "tint", "color": [1, 2, 3, 4]}],
      "fixture": [{"sensor": true, "filter-groupIndex": -3, "chain": {"vertices": {"x": [0, 1, 2], "y": [0, 1, 0]},
        "hasPrevVertex": true, "prevVertex": {"x": -1, "y": 0}}}, {"loop": {"vertices": {"x": [0, 1, 1], "y": [0, 0, 1]}}}]}],
    "joint": [{"type": "revolute", "bodyA": 0, "bodyB": 1}, {"type": "prismatic", "bodyA": 0, "bodyB": 1},
      {"type": "gear", "joint1": 0, "joint2": 1, "ratio": 2}],
    "image": [{"name": "sprite", "body": 1, "flip": true, "colorTint": [10, 20, 30, 40],
      "corners": {"x": [-0.5, 0.5, 0.5, -0.5], "y": [0, 0, 2, 2]}, "glDrawElements": [0, 1, 2, 2, 3, 0]}],
    "object": [{"name": "crate1", "path": "crate.plax", "flip": true}]}`);
  assert.equal(scene.world.stepsPerSecond, 30);
  assert.deepEqual(scene.world.collisionBitplanes, ['ground', 'hero']);
  assert.equal(scene.properties.getInt('level'), 4);
  const hero = scene.bodies[1];
  assert.equal(hero.hasMassData, true);
  const p = hero.properties;
  assert.equal(p.getInt('lives'), 3);
  assert.equal(p.getFloat('speed'), 2.5);
  assert.equal(p.getString('title'), 'Bob');
  assert.deepEqual(p.getVec2('aim'), { x: 1, y: 2 });
  assert.equal(p.getBool('brave'), true);
  assert.deepEqual(p.getColor('tint'), { r: 1, g: 2, b: 3, a: 4 });
  assert.equal(p.getInt('speed', -1), -1, 'a property of another type does not count');
  assert.equal(hero.fixtures[0].groupIndex, -3);
  assert.equal(hero.fixtures[0].shape.hasPrevVertex, true);
  assert.equal(isLoop(hero.fixtures[0].shape), false);
  assert.equal(isLoop(hero.fixtures[1].shape), true, 'a "loop" member is a closed chain');
  assert.equal(scene.joints[2].joint2, 1);
  assert.equal(scene.images[0].corners[2].y, 2);
  assert.equal(scene.images[0].colorTint.a, 40);
  assert.equal(scene.objects[0].path, 'crate.plax');
});

test('malformed input names the member at fault', () => {
  const cases = [
    ['{"body": [{"angle": [1]}]}', '/body/0/angle: expected a float'],
    ['{"body": [{"angle": "3FC0000G"}]}', '/body/0/angle: expected a float'],
    ['{"body": [{}, {"position": {"x": 1}}]}', '/body/1/position: expected a vector'],
    ['{"body": [{"position": {"x": "7F800000", "y": 0}}]}', '/body/0/position/x: expected a finite float'],
    ['{"body": [{"type": 3}]}', '/body/0/type: expected an integer from 0 to 2'],
    ['{"body": [{"fixture": [{"name": "x"}]}]}', '/body/0/fixture/0: a fixture needs one of'],
    ['{"body": [{"fixture": [{"polygon": {"vertices": {"x": [0, 1], "y": [0]}}}]}]}',
      '/body/0/fixture/0/polygon/vertices: the "x" and "y" arrays differ'],
    ['{"body": [{"fixture": [{"filter-maskBits": 70000, "circle": {}}]}]}', '/body/0/fixture/0/filter-maskBits'],
    ['{"body": [{"customProperties": [{"name": "a"}]}]}', '/body/0/customProperties/0: a custom property needs'],
    ['{"body": [{}], "joint": [{"type": "revolute", "bodyA": 0, "bodyB": 1}]}', '/joint/0/bodyB: body 1 does not exist'],
    ['{"body": [{}], "joint": [{"type": "spring", "bodyA": 0, "bodyB": 0}]}', '/joint/0/type: unknown joint type "spring"'],
    ['{"body": [{}, {}], "joint": [{"type": "weld", "bodyA": 0, "bodyB": 1}, {"type": "gear", "joint1": 0, "joint2": 0}]}',
      '/joint/1/joint1: a gear joint couples two revolute'],
    ['{"image": [{"body": 0}]}', '/image/0/body: body 0 does not exist'],
    ['{"image": [{"colorTint": [1, 2]}]}', '/image/0/colorTint: expected a colour'],
    ['[1, 2]', '/: expected an object'],
    ['{"body": [', '/: not JSON'],
  ];
  for (const [json, expected] of cases) {
    assert.throws(() => readRawInfo(json), (e) => {
      assert.ok(e instanceof RawInfoError, `${json}: ${e}`);
      assert.ok(e.message.startsWith(expected), `${json}\n gave: ${e.message}`);
      assert.ok(e.message.startsWith(e.pointer));
      return true;
    });
  }
});
