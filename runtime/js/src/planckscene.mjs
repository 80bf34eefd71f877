// A scene description built into a planck.js world: bodies, fixtures and
// joints made as the editor's export describes them, with lookups by name,
// custom properties and images.

import * as planck from 'planck';

import { NO_PROPERTIES } from './customproperties.mjs';
import { isLoop, RawInfoError } from './reader.mjs';

// The skin radius the editor gives every polygon and chain.
const SKIN_RADIUS = Math.fround(0.01);
// Consecutive chain and edge vertices closer than this are refused, as Box2D does.
const LINEAR_SLOP = 0.005;
const MAX_SHAPE_COORDINATE = 1e7;
const MAX_POSITION = 1e18;

const BODY_TYPES = ['static', 'kinematic', 'dynamic'];

function finiteOr(v, fallback) {
  return Number.isFinite(v) ? v : fallback;
}

function nonNegative(v) {
  return Number.isFinite(v) && v > 0 ? v : 0;
}

function vec(v) {
  return planck.Vec2(v.x, v.y);
}

function plus(v, offset) {
  return { x: v.x + offset.x, y: v.y + offset.y };
}

function unitAxis(axis) {
  const length = Math.hypot(axis.x, axis.y);
  if (!Number.isFinite(length) || length < 1.1920929e-7) return planck.Vec2(1, 0);
  return planck.Vec2(axis.x / length, axis.y / length);
}

function sortedLimits(j) {
  const lower = finiteOr(j.lowerLimit, 0);
  const upper = finiteOr(j.upperLimit, 0);
  return lower <= upper ? [lower, upper] : [upper, lower];
}

function tooClose(a, b) {
  const dx = a.x - b.x;
  const dy = a.y - b.y;
  return dx * dx + dy * dy <= LINEAR_SLOP * LINEAR_SLOP;
}

function within(v, limit) {
  return Number.isFinite(v.x) && Number.isFinite(v.y) && Math.abs(v.x) <= limit && Math.abs(v.y) <= limit;
}

// What planck (like Box2D) cannot build, found before anything is created.
function checkScene(scene, offset) {
  scene.bodies.forEach((body, b) => {
    const at = `/body/${b}`;
    if (!within(plus(body.position, offset), MAX_POSITION)) throw new RawInfoError(`${at}/position`, 'a position beyond +-1e18');
    if (body.linearDamping < 0) throw new RawInfoError(`${at}/linearDamping`, 'a damping of 0 or more is needed');
    if (body.angularDamping < 0) throw new RawInfoError(`${at}/angularDamping`, 'a damping of 0 or more is needed');
    body.fixtures.forEach((fixture, f) => {
      const fat = `${at}/fixture/${f}`;
      if (fixture.density < 0) throw new RawInfoError(`${fat}/density`, 'a density of 0 or more is needed');
      const shape = fixture.shape;
      const vertices = shape.vertices;
      vertices.forEach((v, i) => {
        if (!within(v, MAX_SHAPE_COORDINATE)) throw new RawInfoError(`${fat}/${shape.type}/vertices/${i}`, 'a vertex beyond +-1e7');
      });
      if (shape.type === 'circle') {
        if (!within(shape.center, MAX_SHAPE_COORDINATE)) throw new RawInfoError(`${fat}/circle/center`, 'a centre beyond +-1e7');
        if (!(shape.radius >= 0) || shape.radius > MAX_SHAPE_COORDINATE) {
          throw new RawInfoError(`${fat}/circle/radius`, 'a radius from 0 to 1e7 is needed');
        }
      } else if (shape.type === 'polygon') {
        if (vertices.length < 2 || vertices.length > 8) {
          throw new RawInfoError(`${fat}/polygon/vertices`, `a polygon has 3 to 8 vertices, not ${vertices.length}`);
        }
        if (vertices.length === 2 && tooClose(vertices[0], vertices[1])) {
          throw new RawInfoError(`${fat}/polygon/vertices`, 'the two vertices of an edge are too close together');
        }
        if (vertices.length > 2 && !polygonHasArea(vertices)) {
          throw new RawInfoError(`${fat}/polygon/vertices`,
            'no polygon can be made of these vertices (too close together, in a line, or enclosing too small an area)');
        }
      } else if (shape.type === 'edge') {
        for (const key of ['vertex0', 'vertex1', 'vertex2', 'vertex3']) {
          if (!within(shape[key], MAX_SHAPE_COORDINATE)) throw new RawInfoError(`${fat}/edge/${key}`, 'a vertex beyond +-1e7');
        }
        if (tooClose(shape.vertex1, shape.vertex2)) throw new RawInfoError(`${fat}/edge`, 'the two vertices of an edge are too close together');
      } else {
        if (vertices.length < 2) throw new RawInfoError(`${fat}/chain/vertices`, 'a chain needs at least two vertices');
        for (let i = 1; i < vertices.length; ++i) {
          if (tooClose(vertices[i - 1], vertices[i])) {
            throw new RawInfoError(`${fat}/chain/vertices/${i}`, 'too close to the vertex before it');
          }
        }
      }
    });
  });
  scene.joints.forEach((joint, i) => {
    if (joint.values.type === 'gear') {
      const seconds = [scene.joints[joint.joint1].bodyB, scene.joints[joint.joint2].bodyB];
      if (seconds[0] === seconds[1]) {
        throw new RawInfoError(`/joint/${i}`, 'the two joints of a gear joint need different second bodies (bodyB)');
      }
      if (seconds.some((b) => scene.bodies[b].type !== 2)) {
        throw new RawInfoError(`/joint/${i}`, 'the second bodies (bodyB) of a gear joint\'s two joints must be dynamic');
      }
    } else if (joint.bodyA === joint.bodyB) {
      throw new RawInfoError(`/joint/${i}/bodyB`, 'a joint needs two different bodies');
    }
  });
}

// True when the points, once points closer than half the linear slop are
// merged (as Box2D does), have a convex hull of at least three points with an
// area above single precision's epsilon.
function polygonHasArea(vertices) {
  const kept = [];
  for (const v of vertices) {
    if (!kept.some((k) => (k.x - v.x) ** 2 + (k.y - v.y) ** 2 < (0.5 * LINEAR_SLOP) ** 2)) kept.push(v);
  }
  if (kept.length < 3) return false;
  // Andrew's monotone chain.
  const points = [...kept].sort((a, b) => a.x - b.x || a.y - b.y);
  const cross = (o, a, b) => (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
  const half = (list) => {
    const out = [];
    for (const p of list) {
      while (out.length >= 2 && cross(out[out.length - 2], out[out.length - 1], p) <= 0) out.pop();
      out.push(p);
    }
    out.pop();
    return out;
  };
  const hull = [...half(points), ...half([...points].reverse())];
  if (hull.length < 3) return false;
  let area = 0;
  for (let i = 0; i < hull.length; ++i) {
    const a = hull[i];
    const b = hull[(i + 1) % hull.length];
    area += 0.5 * (a.x * b.y - a.y * b.x);
  }
  return area > 1.1920929e-7;
}

function chainShape(shape) {
  const loop = isLoop(shape);
  const points = (loop ? shape.vertices.slice(0, -1) : shape.vertices).map(vec);
  // planck's chains, like Box2D 2.3's, collide from both sides: no twin is needed.
  const chain = new planck.Chain(points, loop);
  if (!loop) {
    if (shape.hasPrevVertex) chain.setPrevVertex(vec(shape.prevVertex));
    if (shape.hasNextVertex) chain.setNextVertex(vec(shape.nextVertex));
  }
  chain.m_radius = SKIN_RADIUS;
  return chain;
}

function shapeOf(description) {
  switch (description.type) {
    case 'circle':
      return new planck.Circle(vec(description.center), description.radius);
    case 'polygon': {
      if (description.vertices.length === 2) return new planck.Edge(vec(description.vertices[0]), vec(description.vertices[1]));
      const polygon = new planck.Polygon(description.vertices.map(vec));
      polygon.m_radius = SKIN_RADIUS;
      return polygon;
    }
    case 'edge': {
      const edge = new planck.Edge(vec(description.vertex1), vec(description.vertex2));
      if (description.hasVertex0 && description.hasVertex3) {
        edge.setPrevVertex(vec(description.vertex0));
        edge.setNextVertex(vec(description.vertex3));
      }
      return edge;
    }
    default:
      return chainShape(description);
  }
}

// planck 1.3.0's friction joint keeps a reference to its accumulated linear
// impulse as the "old" impulse, so each iteration applies nothing beyond the
// warm start. This is Box2D's solver step, which the friction joints this
// runtime makes use instead (planck's own fields, pinned by package-lock.json).
function solveFrictionVelocity(step) {
  const vA = this.m_bodyA.c_velocity.v;
  let wA = this.m_bodyA.c_velocity.w;
  const vB = this.m_bodyB.c_velocity.v;
  let wB = this.m_bodyB.c_velocity.w;
  const mA = this.m_invMassA;
  const mB = this.m_invMassB;
  const iA = this.m_invIA;
  const iB = this.m_invIB;
  const h = step.dt;
  {
    const cdot = wB - wA;
    const old = this.m_angularImpulse;
    const max = h * this.m_maxTorque;
    this.m_angularImpulse = Math.min(max, Math.max(-max, old - this.m_angularMass * cdot));
    const impulse = this.m_angularImpulse - old;
    wA -= iA * impulse;
    wB += iB * impulse;
  }
  {
    const cdot = planck.Vec2.sub(planck.Vec2.add(vB, planck.Vec2.crossNumVec2(wB, this.m_rB)),
      planck.Vec2.add(vA, planck.Vec2.crossNumVec2(wA, this.m_rA)));
    const impulse = planck.Vec2.neg(planck.Mat22.mulVec2(this.m_linearMass, cdot));
    const old = planck.Vec2.clone(this.m_linearImpulse);
    this.m_linearImpulse.add(impulse);
    const max = h * this.m_maxForce;
    if (this.m_linearImpulse.lengthSquared() > max * max) {
      this.m_linearImpulse.normalize();
      this.m_linearImpulse.mul(max);
    }
    const applied = planck.Vec2.sub(this.m_linearImpulse, old);
    vA.subMul(mA, applied);
    wA -= iA * planck.Vec2.crossVec2Vec2(this.m_rA, applied);
    vB.addMul(mB, applied);
    wB += iB * planck.Vec2.crossVec2Vec2(this.m_rB, applied);
  }
  this.m_bodyA.c_velocity.w = wA;
  this.m_bodyB.c_velocity.w = wB;
}

/**
 * The planck joint of authored joint values, mapped as the editor maps them
 * onto Box2D 2.4.1 (see the C++ runtime's createBox2DJoint): limits in order,
 * negative forces and frequencies as 0, a rigid distance joint without
 * frequency and a spring with one, a rope with its maximum length, a motor
 * joint's anchorA as its linear offset and its reference angle as its angular
 * offset. planck keeps Box2D 2.3's frequency and damping ratio where Box2D
 * 2.4.1 takes stiffness and damping, so springs agree closely, not exactly.
 */
export function createPlanckJoint(world, j, bodyA, bodyB, joint1, joint2) {
  const common = { bodyA, bodyB, collideConnected: j.collideConnected };
  const anchors = { localAnchorA: vec(j.anchorA), localAnchorB: vec(j.anchorB) };
  let joint = null;
  switch (j.type) {
    case 'revolute': {
      const [lowerAngle, upperAngle] = sortedLimits(j);
      joint = new planck.RevoluteJoint({
        ...common, ...anchors, referenceAngle: finiteOr(j.referenceAngle, 0), enableLimit: j.enableLimit, lowerAngle,
        upperAngle, enableMotor: j.enableMotor, motorSpeed: finiteOr(j.motorSpeed, 0), maxMotorTorque: nonNegative(j.maxMotorTorque),
      });
      break;
    }
    case 'prismatic': {
      const [lowerTranslation, upperTranslation] = sortedLimits(j);
      joint = new planck.PrismaticJoint({
        ...common, ...anchors, localAxisA: unitAxis(j.localAxisA), referenceAngle: finiteOr(j.referenceAngle, 0),
        enableLimit: j.enableLimit, lowerTranslation, upperTranslation, enableMotor: j.enableMotor,
        maxMotorForce: nonNegative(j.maxMotorForce), motorSpeed: finiteOr(j.motorSpeed, 0),
      });
      break;
    }
    case 'distance': {
      const spring = Number.isFinite(j.frequency) && j.frequency > 0;
      joint = new planck.DistanceJoint({
        ...common, ...anchors, length: Math.max(nonNegative(j.length), LINEAR_SLOP),
        frequencyHz: spring ? j.frequency : 0, dampingRatio: spring ? nonNegative(j.dampingRatio) : 0,
      });
      break;
    }
    case 'rope':
      joint = new planck.RopeJoint({ ...common, ...anchors, maxLength: Math.max(nonNegative(j.maxLength), LINEAR_SLOP) });
      break;
    case 'wheel':
      joint = new planck.WheelJoint({
        ...common, ...anchors, localAxisA: unitAxis(j.localAxisA), enableMotor: j.enableMotor,
        motorSpeed: finiteOr(j.motorSpeed, 0), maxMotorTorque: nonNegative(j.maxMotorTorque),
        frequencyHz: nonNegative(j.springFrequency), dampingRatio: nonNegative(j.springDampingRatio),
      });
      break;
    case 'weld':
      joint = new planck.WeldJoint({
        ...common, ...anchors, referenceAngle: finiteOr(j.referenceAngle, 0), frequencyHz: nonNegative(j.frequency),
        dampingRatio: nonNegative(j.dampingRatio),
      });
      break;
    case 'friction':
      joint = new planck.FrictionJoint({ ...common, ...anchors, maxForce: nonNegative(j.maxForce), maxTorque: nonNegative(j.maxTorque) });
      joint.solveVelocityConstraints = solveFrictionVelocity;
      break;
    case 'motor':
      joint = new planck.MotorJoint({
        ...common, linearOffset: vec(j.anchorA), angularOffset: finiteOr(j.referenceAngle, 0), maxForce: nonNegative(j.maxForce),
        maxTorque: nonNegative(j.maxTorque), correctionFactor: Math.min(1, Math.max(0, finiteOr(j.correctionFactor, 0.3))),
      });
      break;
    case 'pulley': {
      const ratio = finiteOr(j.ratio, 1);
      joint = new planck.PulleyJoint({
        ...common, ...anchors, groundAnchorA: vec(j.groundAnchorA), groundAnchorB: vec(j.groundAnchorB),
        lengthA: nonNegative(j.lengthA), lengthB: nonNegative(j.lengthB), ratio: Math.abs(ratio) > 1.1920929e-7 ? ratio : 1,
      });
      break;
    }
    case 'mouse': {
      // The target starts at body B's anchor, then moves to the file's target.
      joint = new planck.MouseJoint({
        ...common, target: bodyB.getWorldPoint(vec(j.anchorB)), maxForce: nonNegative(j.maxForce),
        frequencyHz: nonNegative(j.frequency), dampingRatio: nonNegative(j.dampingRatio),
      });
      joint.setTarget(vec(j.target));
      break;
    }
    case 'gear':
      joint = new planck.GearJoint({
        bodyA: joint1.getBodyB(), bodyB: joint2.getBodyB(), collideConnected: j.collideConnected, joint1, joint2,
        ratio: finiteOr(j.ratio, 1),
      });
      break;
    default:
      return null;
  }
  return world.createJoint(joint);
}

/**
 * A scene built into a planck world, of its own or merged into one the game
 * has. It keeps the description for names, custom properties and images, and
 * maps every planck object back to its record.
 */
export class PlanckScene {
  /**
   * Builds a scene description into a new world with the scene's gravity and
   * solver flags. Throws RawInfoError (naming the record) when a record cannot
   * be built; nothing is created then.
   */
  static create(scene) {
    const s = scene.world;
    const world = new planck.World({
      gravity: vec(s.gravity), allowSleep: s.allowSleep, warmStarting: s.warmStarting,
      continuousPhysics: s.continuousPhysics, subStepping: s.subStepping,
    });
    world.setAutoClearForces(s.autoClearForces);
    return new PlanckScene(world, scene, { x: 0, y: 0 }, true);
  }

  /**
   * Adds the scene to an existing world, translated by `offset` (bodies,
   * images without a body, and the world points of pulley and mouse joints).
   * The world's settings are left alone. Throws RawInfoError when a record
   * cannot be built; nothing is added then.
   */
  static merge(world, scene, offset = { x: 0, y: 0 }) {
    return new PlanckScene(world, scene, offset, false);
  }

  constructor(world, scene, offset, ownsWorld) {
    checkScene(scene, offset);
    /** The planck world. */
    this.world = world;
    /** True when the world was made for this scene. */
    this.ownsWorld = ownsWorld;
    /** The scene description. */
    this.description = scene;
    /** Bodies, fixtures and joints in record order. */
    this.bodies = [];
    this.fixtures = [];
    this.joints = [];
    this.records = new Map();

    for (const record of scene.bodies) {
      const body = world.createBody({
        type: BODY_TYPES[record.type], position: vec(plus(record.position, offset)), angle: record.angle,
        linearVelocity: vec(record.linearVelocity), angularVelocity: record.angularVelocity,
        linearDamping: record.linearDamping, angularDamping: record.angularDamping, gravityScale: record.gravityScale,
        bullet: record.bullet, allowSleep: record.allowSleep, awake: record.awake, active: record.active,
        fixedRotation: record.fixedRotation,
      });
      for (const f of record.fixtures) {
        const fixture = body.createFixture({
          shape: shapeOf(f.shape), density: f.density, friction: f.friction, restitution: f.restitution,
          isSensor: f.sensor, filterCategoryBits: f.categoryBits, filterMaskBits: f.maskBits,
          filterGroupIndex: f.groupIndex,
        });
        this.fixtures.push(fixture);
        this.records.set(fixture, f);
      }
      // The exporter computed the mass in single precision: take it as written.
      if (record.type === 2 && record.hasMassData && record.mass > 0) {
        body.setMassData({ mass: record.mass, center: vec(record.massCenter), I: record.inertia });
      }
      this.bodies.push(body);
      this.records.set(body, record);
    }

    // Gear joints need the joints they couple: they are made after all others.
    this.joints = new Array(scene.joints.length).fill(null);
    for (const pass of [false, true]) {
      scene.joints.forEach((record, i) => {
        const gear = record.values.type === 'gear';
        if (gear !== pass) return;
        const values = {
          ...record.values, groundAnchorA: plus(record.values.groundAnchorA, offset),
          groundAnchorB: plus(record.values.groundAnchorB, offset), target: plus(record.values.target, offset),
        };
        const joint = createPlanckJoint(world, values, this.bodies[record.bodyA] ?? null, this.bodies[record.bodyB] ?? null,
          gear ? this.joints[record.joint1] : null, gear ? this.joints[record.joint2] : null);
        this.joints[i] = joint;
        if (joint) this.records.set(joint, record);
      });
    }

    /** Images in record order, placed by the offset of a merge. */
    this.images = scene.images.map((image) => {
      if (image.body >= 0 || (offset.x === 0 && offset.y === 0)) return image;
      return {
        ...image, center: plus(image.center, offset), corners: image.corners && image.corners.map((c) => plus(c, offset)),
        vertexPointer: image.vertexPointer.map((v, i) => v + (i % 2 === 0 ? offset.x : offset.y)),
      };
    });
  }

  /** Gravity, steps per second and iteration counts of the file. */
  get settings() {
    return this.description.world;
  }

  /** The world's custom properties. */
  get worldProperties() {
    return this.description.properties;
  }

  /** Advances the world by one step of 1 / stepsPerSecond seconds with the file's iteration counts. */
  step() {
    const s = this.description.world;
    const hz = s.stepsPerSecond >= 1 ? s.stepsPerSecond : 1;
    this.world.step(1 / hz, s.velocityIterations, s.positionIterations);
  }

  /** The first body with that name in record order, or null. */
  body(name) { return this.bodies.find((b) => this.records.get(b).name === name) ?? null; }
  /** All bodies with that name. */
  bodiesNamed(name) { return this.bodies.filter((b) => this.records.get(b).name === name); }
  /** The first fixture with that name, or null. */
  fixture(name) { return this.fixtures.find((f) => this.records.get(f).name === name) ?? null; }
  /** All fixtures with that name. */
  fixturesNamed(name) { return this.fixtures.filter((f) => this.records.get(f).name === name); }
  /** The first joint with that name, or null. */
  joint(name) { return this.joints.find((j) => j && this.records.get(j).name === name) ?? null; }
  /** All joints with that name. */
  jointsNamed(name) { return this.joints.filter((j) => j && this.records.get(j).name === name); }
  /** The first image with that name, or null. */
  image(name) { return this.images.find((i) => i.name === name) ?? null; }
  /** All images with that name. */
  imagesNamed(name) { return this.images.filter((i) => i.name === name); }

  /** The record of a body, fixture or joint of this scene, or null. */
  record(object) { return this.records.get(object) ?? null; }
  /** The name of a body, fixture or joint ('' when unknown). */
  name(object) { return this.records.get(object)?.name ?? ''; }
  /** The custom properties of a body, fixture or joint (empty when unknown). */
  properties(object) { return this.records.get(object)?.properties ?? NO_PROPERTIES; }

  /** The body an image is drawn on, or null. */
  imageBody(image) { return image.body >= 0 ? this.bodies[image.body] ?? null : null; }
  /** The images drawn on a body, in record order. */
  imagesOf(body) { return this.images.filter((i) => body && this.imageBody(i) === body); }
  /** An image's corners in world coordinates at its body's current place. */
  imageCorners(image) {
    const body = this.imageBody(image);
    const corners = image.corners ?? [image.center, image.center, image.center, image.center];
    return corners.map((c) => (body ? body.getWorldPoint(vec(c)) : planck.Vec2(c.x, c.y)));
  }
  /** The images in the order to draw them: by render order, file order among equals. */
  imagesInRenderOrder() {
    return this.images.map((image, i) => ({ image, i }))
      .sort((a, b) => a.image.renderOrder - b.image.renderOrder || a.i - b.i).map((e) => e.image);
  }
}
