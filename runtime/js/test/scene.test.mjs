// The JavaScript runtime's planck worlds: lookups, custom properties,
// images, merging into a game's world and records that cannot be built.
import assert from 'node:assert/strict';
import { test } from 'node:test';

import * as planck from 'planck';

import { loadScene, mergeScene, RawInfoError } from '../plax-runtime.mjs';

const level = {
  gravity: { x: 0, y: -10 }, stepsPerSecond: 30, velocityIterations: 4, positionIterations: 2,
  customProperties: [{ name: 'title', string: 'Level 1' }],
  body: [
    { name: 'ground', type: 0, fixture: [{ name: 'floor', chain: { vertices: { x: [-20, 20], y: [0, 0] } } }] },
    { name: 'crate', type: 2, position: { x: -2, y: 3 }, angle: 0.5,
      customProperties: [{ name: 'points', int: 50 }],
      fixture: [{ name: 'box', density: 1, friction: 0.6,
        polygon: { vertices: { x: [0.5, 0.5, -0.5, -0.5], y: [-0.5, 0.5, 0.5, -0.5] } },
        customProperties: [{ name: 'surface', color: [1, 2, 3, 255] }] }] },
    { name: 'crate', type: 2, position: { x: 2, y: 3 }, fixture: [{ name: 'lid', density: 1, circle: { radius: 0.5 } }] },
    { name: 'hook', type: 2, position: { x: 0, y: 8 }, fixture: [{ density: 1, circle: { radius: 0.3 } }] },
  ],
  joint: [
    { type: 'revolute', name: 'left hinge', bodyA: 0, bodyB: 1, anchorA: { x: -2, y: 4 }, anchorB: { x: 0, y: 1 },
      customProperties: [{ name: 'strength', float: 12.5 }] },
    { type: 'prismatic', name: 'right slide', bodyA: 0, bodyB: 2, anchorA: { x: 2, y: 3 }, anchorB: 0, localAxisA: { x: 0, y: 1 } },
    { type: 'gear', name: 'gears', joint1: 0, joint2: 1, ratio: 2 },
    { type: 'pulley', name: 'pulley', bodyA: 1, bodyB: 3, groundAnchorA: { x: -2, y: 10 }, groundAnchorB: { x: 0, y: 10 },
      anchorA: 0, anchorB: 0, lengthA: 7, lengthB: 2, ratio: 1.5 },
    { type: 'mouse', name: 'drag', bodyA: 0, bodyB: 3, target: { x: 1, y: 9 }, maxForce: 100, frequency: 5, dampingRatio: 0.7 },
  ],
  image: [
    { name: 'crate sprite', file: 'crate.png', body: 1, renderOrder: 2, corners: { x: [-0.5, 0.5, 0.5, -0.5], y: [-0.5, -0.5, 0.5, 0.5] } },
    { name: 'sky', file: 'sky.png', body: -1, center: { x: 0, y: 5 }, renderOrder: -1,
      corners: { x: [-10, 10, 10, -10], y: [0, 0, 10, 10] }, glVertexPointer: [-10, 0, 10, 0, 10, 10, -10, 10] },
  ],
};

test('finds items by name and gives their custom properties', () => {
  const scene = loadScene(level);
  assert.equal(scene.bodies.length, 4);
  assert.equal(scene.body('crate'), scene.bodies[1], 'the first of a name');
  assert.deepEqual(scene.bodiesNamed('crate'), [scene.bodies[1], scene.bodies[2]]);
  assert.equal(scene.body('nobody'), null);
  const crate = scene.body('crate');
  assert.equal(crate.isDynamic(), true);
  assert.equal(crate.getAngle(), 0.5);
  assert.equal(scene.properties(crate).getInt('points'), 50);
  const box = scene.fixture('box');
  assert.equal(box.getBody(), crate);
  assert.equal(box.getFriction(), Math.fround(0.6));
  assert.deepEqual(scene.properties(box).getColor('surface'), { r: 1, g: 2, b: 3, a: 255 });
  assert.equal(scene.properties(scene.joint('left hinge')).getFloat('strength'), 12.5);
  assert.equal(scene.worldProperties.getString('title'), 'Level 1');
  assert.equal(scene.name(scene.world.createBody()), '');
  assert.equal(scene.properties(scene.world.createBody()).empty, true);
});

test('builds gear, pulley and mouse joints', () => {
  const scene = loadScene(level);
  const gear = scene.joint('gears');
  assert.equal(gear.getType(), 'gear-joint');
  assert.equal(gear.getJoint1(), scene.joint('left hinge'));
  assert.equal(gear.getJoint2(), scene.joint('right slide'));
  assert.equal(gear.getRatio(), 2);
  const pulley = scene.joint('pulley');
  assert.equal(pulley.getType(), 'pulley-joint');
  assert.deepEqual({ ...pulley.getGroundAnchorB() }, { x: 0, y: 10 });
  assert.equal(pulley.getRatio(), 1.5);
  const mouse = scene.joint('drag');
  assert.deepEqual({ ...mouse.getTarget() }, { x: 1, y: 9 });
  assert.equal(mouse.getMaxForce(), 100);
});

test('steps at the file rate', () => {
  const scene = loadScene({ ...level, joint: [] });
  const hook = scene.body('hook');
  scene.step();
  assert.ok(Math.abs(hook.getLinearVelocity().y - -10 / 30) < 1e-9, 'one step of 1/30 s');
});

test('images carry what a sprite needs', () => {
  const scene = loadScene(level);
  const sprite = scene.image('crate sprite');
  const crate = scene.body('crate');
  assert.equal(scene.imageBody(sprite), crate);
  assert.equal(scene.imageBody(scene.image('sky')), null);
  assert.deepEqual(scene.imagesOf(crate), [sprite]);
  const corner = scene.imageCorners(sprite)[0];
  const expected = crate.getWorldPoint(planck.Vec2(-0.5, -0.5));
  assert.equal(corner.x, expected.x);
  assert.equal(corner.y, expected.y);
  assert.deepEqual(scene.imagesInRenderOrder().map((i) => i.name), ['sky', 'crate sprite']);
});

test('merges into a game world at an offset', () => {
  const world = new planck.World({ gravity: planck.Vec2(0, -3) });
  world.createBody();
  const first = mergeScene(world, level, { x: 100, y: 0 });
  const second = mergeScene(world, JSON.stringify(level), { x: 200, y: 5 });
  assert.equal(first.ownsWorld, false);
  assert.equal(world.getBodyCount(), 9);
  assert.equal(world.getGravity().y, -3, 'the game settings stay');
  assert.deepEqual({ ...first.body('crate').getPosition() }, { x: 98, y: 3 });
  assert.deepEqual({ ...second.body('crate').getPosition() }, { x: 198, y: 8 });
  assert.deepEqual({ ...second.joint('pulley').getGroundAnchorA() }, { x: 198, y: 15 });
  assert.deepEqual({ ...second.joint('drag').getTarget() }, { x: 201, y: 14 });
  assert.equal(second.image('sky').center.x, 200);
  assert.equal(second.image('sky').vertexPointer[0], 190);
  assert.equal(second.image('crate sprite').corners[0].x, -0.5, 'images on bodies stay in the body frame');

  const broken = structuredClone(level);
  broken.body[3].fixture[0].circle.radius = -1;
  assert.throws(() => mergeScene(world, broken), /\/body\/3\/fixture\/0\/circle\/radius: a radius from 0 to 1e7/);
  assert.equal(world.getBodyCount(), 9, 'a record that cannot be built adds nothing');
});

test('records that cannot be built are reported', () => {
  const cases = [
    [(l) => { l.body[1].fixture[0].polygon.vertices = { x: [0, 0.001, 0.002, 0.001], y: [0, 0, 0, 0.001] }; },
      '/body/1/fixture/0/polygon/vertices: no polygon'],
    [(l) => { l.body[0].fixture[0].chain.vertices = { x: [-20, -20.001, 5], y: [0, 0, 0] }; },
      '/body/0/fixture/0/chain/vertices/1: too close'],
    [(l) => { l.body[1].fixture[0].density = -1; }, '/body/1/fixture/0/density'],
    [(l) => { l.body[1].linearDamping = -0.5; }, '/body/1/linearDamping'],
    [(l) => { l.joint[0].bodyA = 1; }, '/joint/0/bodyB: a joint needs two different bodies'],
    [(l) => { l.joint[1].bodyB = 1; }, '/joint/2: the two joints of a gear joint'],
  ];
  for (const [change, expected] of cases) {
    const broken = structuredClone(level);
    change(broken);
    assert.throws(() => loadScene(broken), (e) => {
      assert.ok(e instanceof RawInfoError);
      assert.ok(e.message.startsWith(expected), e.message);
      return true;
    });
  }
});
