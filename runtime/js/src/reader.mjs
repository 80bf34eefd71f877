// Reads raw-info JSON into a plain scene description that knows nothing of
// any physics engine. Every float encoding the editor writes is accepted
// (eight hex digits of the single-precision bit pattern, the integers 0 and
// 1, JSON reals) and read as the single-precision value the editor had;
// vectors as {"x","y"} or the number 0. Missing members take their defaults
// (an export may leave members out). Malformed input throws a RawInfoError
// whose message starts with the JSON pointer of the member at fault.

import { CustomProperties } from './customproperties.mjs';

/** A raw-info file that cannot be read; `pointer` names the member. */
export class RawInfoError extends Error {
  constructor(pointer, what) {
    super(`${pointer}: ${what}`);
    this.name = 'RawInfoError';
    this.pointer = pointer;
  }
}

export const JOINT_TYPES = Object.freeze([
  'revolute', 'prismatic', 'distance', 'pulley', 'mouse', 'gear', 'wheel', 'weld', 'friction', 'rope', 'motor',
]);

const bitsView = new DataView(new ArrayBuffer(4));

function fail(pointer, what) {
  throw new RawInfoError(pointer === '' ? '/' : pointer, what);
}

function describe(value) {
  if (value === null) return 'null';
  if (Array.isArray(value)) return 'an array';
  switch (typeof value) {
    case 'boolean': return 'a boolean';
    case 'number': return 'a number';
    case 'string': return 'a string';
    case 'object': return 'an object';
    default: return 'a value';
  }
}

function isObject(value) {
  return value !== null && typeof value === 'object' && !Array.isArray(value);
}

function requireObject(value, at) {
  if (!isObject(value)) fail(at, `expected an object, found ${describe(value)}`);
  return value;
}

function requireArray(value, at) {
  if (!Array.isArray(value)) fail(at, `expected an array, found ${describe(value)}`);
  return value;
}

function readFloat(value, at, finite = true) {
  let result;
  if (typeof value === 'string') {
    if (!/^[0-9A-Fa-f]{1,8}$/.test(value)) {
      fail(at, `expected a float (eight hex digits), found the string "${value.slice(0, 40)}"`);
    }
    bitsView.setUint32(0, parseInt(value, 16));
    result = bitsView.getFloat32(0);
  } else if (typeof value === 'number') {
    result = Math.fround(value);
  } else {
    fail(at, `expected a float, found ${describe(value)}`);
  }
  if (finite && !Number.isFinite(result)) fail(at, 'expected a finite float');
  return result;
}

function readVec2(value, at, finite = true) {
  if (typeof value === 'number') {
    if (value !== 0) fail(at, 'expected a vector: an object with "x" and "y", or the number 0');
    return { x: 0, y: 0 };
  }
  if (!isObject(value)) fail(at, `expected a vector, found ${describe(value)}`);
  if (!('x' in value) || !('y' in value)) fail(at, 'expected a vector with both "x" and "y"');
  return { x: readFloat(value.x, `${at}/x`, finite), y: readFloat(value.y, `${at}/y`, finite) };
}

function readPointList(value, at) {
  if (Array.isArray(value)) return value.map((v, i) => readVec2(v, `${at}/${i}`));
  if (!isObject(value)) fail(at, `expected a point list, found ${describe(value)}`);
  if (!('x' in value) || !('y' in value)) fail(at, 'expected a point list with both "x" and "y" arrays');
  const xs = requireArray(value.x, `${at}/x`);
  const ys = requireArray(value.y, `${at}/y`);
  if (xs.length !== ys.length) {
    fail(at, `the "x" and "y" arrays differ in length (${xs.length} and ${ys.length})`);
  }
  return xs.map((x, i) => ({ x: readFloat(x, `${at}/x/${i}`), y: readFloat(ys[i], `${at}/y/${i}`) }));
}

function readBool(value, at) {
  if (typeof value === 'boolean') return value;
  if (typeof value === 'number') return value !== 0;
  fail(at, `expected true or false, found ${describe(value)}`);
}

function readInt(value, at, lowest, highest) {
  if (typeof value !== 'number') fail(at, `expected an integer, found ${describe(value)}`);
  if (!Number.isInteger(value) || value < lowest || value > highest) {
    fail(at, `expected an integer from ${lowest} to ${highest}`);
  }
  return value;
}

function readString(value, at) {
  if (typeof value !== 'string') fail(at, `expected a string, found ${describe(value)}`);
  return value;
}

function readColor(value, at) {
  const channels = requireArray(value, at);
  if (channels.length < 3 || channels.length > 4) fail(at, 'expected a colour: an array of three or four numbers 0..255');
  const c = [255, 255, 255, 255];
  channels.forEach((v, i) => {
    if (typeof v !== 'number') fail(`${at}/${i}`, `expected a number 0..255, found ${describe(v)}`);
    c[i] = Math.trunc(Math.min(255, Math.max(0, v)));
  });
  return { r: c[0], g: c[1], b: c[2], a: c[3] };
}

const INT_MIN = -2147483648;
const INT_MAX = 2147483647;

const PROPERTY_READERS = {
  int: (v, at) => readInt(v, at, INT_MIN, INT_MAX),
  float: (v, at) => readFloat(v, at, false),
  string: readString,
  vec2: (v, at) => readVec2(v, at, false),
  bool: readBool,
  color: readColor,
};

function readCustomProperties(value, at, out) {
  requireArray(value, at).forEach((entry, i) => {
    const where = `${at}/${i}`;
    requireObject(entry, where);
    if (!('name' in entry)) fail(where, 'a custom property needs a "name"');
    const name = readString(entry.name, `${where}/name`);
    let found = false;
    for (const key of Object.keys(entry)) {
      const reader = PROPERTY_READERS[key];
      if (!reader) continue;
      const v = reader(entry[key], `${where}/${key}`);
      if (found) {
        fail(where, 'a custom property holds exactly one of "int", "float", "string", "vec2", "bool", "color"');
      }
      out.add(name, key, v);
      found = true;
    }
    if (!found) fail(where, 'a custom property needs one of "int", "float", "string", "vec2", "bool", "color"');
  });
  return out;
}

function readIndex(value, at, count, what) {
  const i = readInt(value, at, -1, INT_MAX);
  if (i >= count) fail(at, `${what} ${i} does not exist (there are ${count})`);
  return i;
}

function readShape(kind, value, at) {
  requireObject(value, at);
  const shape = {
    type: 'circle', center: { x: 0, y: 0 }, radius: 0, vertices: [],
    vertex0: { x: 0, y: 0 }, vertex1: { x: 0, y: 0 }, vertex2: { x: 0, y: 0 }, vertex3: { x: 0, y: 0 },
    hasVertex0: false, hasVertex3: false,
    prevVertex: { x: 0, y: 0 }, nextVertex: { x: 0, y: 0 }, hasPrevVertex: false, hasNextVertex: false,
  };
  const members = (handlers) => {
    for (const [key, v] of Object.entries(value)) {
      const h = handlers[key];
      if (h) h(v, `${at}/${key}`);
    }
  };
  if (kind === 'circle') {
    members({ center: (v, w) => { shape.center = readVec2(v, w); }, radius: (v, w) => { shape.radius = readFloat(v, w); } });
  } else if (kind === 'polygon') {
    shape.type = 'polygon';
    if (!('vertices' in value)) fail(at, 'a polygon needs "vertices"');
    shape.vertices = readPointList(value.vertices, `${at}/vertices`);
  } else if (kind === 'edge') {
    shape.type = 'edge';
    members({
      vertex0: (v, w) => { shape.vertex0 = readVec2(v, w); },
      vertex1: (v, w) => { shape.vertex1 = readVec2(v, w); },
      vertex2: (v, w) => { shape.vertex2 = readVec2(v, w); },
      vertex3: (v, w) => { shape.vertex3 = readVec2(v, w); },
      hasVertex0: (v, w) => { shape.hasVertex0 = readBool(v, w); },
      hasVertex3: (v, w) => { shape.hasVertex3 = readBool(v, w); },
    });
  } else {
    // "chain", or "loop": a closed chain listed without its repeated first vertex.
    shape.type = 'chain';
    if (!('vertices' in value)) fail(at, `a ${kind} needs "vertices"`);
    shape.vertices = readPointList(value.vertices, `${at}/vertices`);
    if (kind === 'loop') {
      if (shape.vertices.length < 3) fail(`${at}/vertices`, 'a loop needs at least three vertices');
      shape.vertices.push({ ...shape.vertices[0] });
    } else {
      members({
        hasPrevVertex: (v, w) => { shape.hasPrevVertex = readBool(v, w); },
        hasNextVertex: (v, w) => { shape.hasNextVertex = readBool(v, w); },
        prevVertex: (v, w) => { shape.prevVertex = readVec2(v, w); },
        nextVertex: (v, w) => { shape.nextVertex = readVec2(v, w); },
      });
    }
  }
  return shape;
}

/** True for a chain whose last vertex repeats its first (at least four vertices). */
export function isLoop(shape) {
  const v = shape.vertices;
  return shape.type === 'chain' && v.length > 3 && v[0].x === v[v.length - 1].x && v[0].y === v[v.length - 1].y;
}

const SHAPE_KINDS = new Set(['circle', 'polygon', 'edge', 'chain', 'loop']);

function readFixture(value, at) {
  requireObject(value, at);
  const f = {
    name: '', friction: Math.fround(0.2), restitution: 0, density: 0, sensor: false,
    categoryBits: 1, maskBits: 0xffff, groupIndex: 0, shape: null, properties: new CustomProperties(),
  };
  let kind = null;
  for (const [key, v] of Object.entries(value)) {
    const w = `${at}/${key}`;
    switch (key) {
      case 'name': f.name = readString(v, w); break;
      case 'friction': f.friction = readFloat(v, w); break;
      case 'restitution': f.restitution = readFloat(v, w); break;
      case 'density': f.density = readFloat(v, w); break;
      case 'sensor': f.sensor = readBool(v, w); break;
      case 'filter-categoryBits': f.categoryBits = readInt(v, w, 0, 0xffff); break;
      case 'filter-maskBits': f.maskBits = readInt(v, w, 0, 0xffff); break;
      case 'filter-groupIndex': f.groupIndex = readInt(v, w, -32768, 32767); break;
      case 'customProperties': readCustomProperties(v, w, f.properties); break;
      default:
        if (SHAPE_KINDS.has(key)) {
          if (kind) fail(w, `a fixture has one shape, and this one already has "${kind}"`);
          kind = key;
          f.shape = readShape(key, v, w);
        }
    }
  }
  if (!kind) fail(at, 'a fixture needs one of "circle", "polygon", "edge", "chain"');
  return f;
}

const BODY_FLOATS = ['angle', 'angularVelocity', 'linearDamping', 'angularDamping', 'gravityScale'];
const BODY_BOOLS = ['bullet', 'allowSleep', 'awake', 'active', 'fixedRotation'];

function readBody(value, at) {
  requireObject(value, at);
  const b = {
    name: '', type: 0, position: { x: 0, y: 0 }, angle: 0, linearVelocity: { x: 0, y: 0 }, angularVelocity: 0,
    linearDamping: 0, angularDamping: 0, gravityScale: 1, bullet: false, allowSleep: true, awake: true, active: true,
    fixedRotation: false, hasMassData: false, mass: 0, massCenter: { x: 0, y: 0 }, inertia: 0,
    fixtures: [], properties: new CustomProperties(),
  };
  for (const [key, v] of Object.entries(value)) {
    const w = `${at}/${key}`;
    if (BODY_FLOATS.includes(key)) b[key] = readFloat(v, w);
    else if (BODY_BOOLS.includes(key)) b[key] = readBool(v, w);
    else if (key === 'name') b.name = readString(v, w);
    else if (key === 'type') b.type = readInt(v, w, 0, 2);
    else if (key === 'position') b.position = readVec2(v, w);
    else if (key === 'linearVelocity') b.linearVelocity = readVec2(v, w);
    else if (key === 'massData-mass') { b.mass = readFloat(v, w); b.hasMassData = true; }
    else if (key === 'massData-center') { b.massCenter = readVec2(v, w); b.hasMassData = true; }
    else if (key === 'massData-I') { b.inertia = readFloat(v, w); b.hasMassData = true; }
    else if (key === 'customProperties') readCustomProperties(v, w, b.properties);
    else if (key === 'fixture') b.fixtures = requireArray(v, w).map((f, i) => readFixture(f, `${w}/${i}`));
  }
  return b;
}

const JOINT_FLOATS = {
  refAngle: 'referenceAngle', lowerLimit: 'lowerLimit', upperLimit: 'upperLimit', motorSpeed: 'motorSpeed',
  maxMotorTorque: 'maxMotorTorque', maxMotorForce: 'maxMotorForce', length: 'length', frequency: 'frequency',
  dampingRatio: 'dampingRatio', springFrequency: 'springFrequency', springDampingRatio: 'springDampingRatio',
  maxForce: 'maxForce', maxTorque: 'maxTorque', maxLength: 'maxLength', correctionFactor: 'correctionFactor',
  lengthA: 'lengthA', lengthB: 'lengthB', ratio: 'ratio',
};
const JOINT_VECTORS = ['anchorA', 'anchorB', 'localAxisA', 'groundAnchorA', 'groundAnchorB', 'target'];
const JOINT_BOOLS = ['collideConnected', 'enableLimit', 'enableMotor'];

/** A joint's authored values with the defaults of missing members. */
function jointValues(type) {
  return {
    type, collideConnected: false, anchorA: { x: 0, y: 0 }, anchorB: { x: 0, y: 0 }, referenceAngle: 0,
    enableLimit: false, lowerLimit: 0, upperLimit: 0, enableMotor: false, motorSpeed: 0, maxMotorTorque: 0,
    maxMotorForce: 0, localAxisA: { x: 1, y: 0 }, length: 1, frequency: 0, dampingRatio: 0, springFrequency: 0,
    springDampingRatio: 0, maxForce: 0, maxTorque: 0, maxLength: 1, correctionFactor: Math.fround(0.3),
    groundAnchorA: { x: 0, y: 0 }, groundAnchorB: { x: 0, y: 0 }, lengthA: 0, lengthB: 0, ratio: 1,
    target: { x: 0, y: 0 },
  };
}

function readJoint(value, at, bodyCount, jointCount) {
  requireObject(value, at);
  if (!('type' in value)) fail(at, 'a joint needs a "type"');
  const type = readString(value.type, `${at}/type`);
  if (!JOINT_TYPES.includes(type)) fail(`${at}/type`, `unknown joint type "${type}"`);
  const j = { name: '', bodyA: -1, bodyB: -1, joint1: -1, joint2: -1, values: jointValues(type),
    properties: new CustomProperties() };
  for (const [key, v] of Object.entries(value)) {
    const w = `${at}/${key}`;
    if (key in JOINT_FLOATS) j.values[JOINT_FLOATS[key]] = readFloat(v, w);
    else if (JOINT_VECTORS.includes(key)) j.values[key] = readVec2(v, w);
    else if (JOINT_BOOLS.includes(key)) j.values[key] = readBool(v, w);
    else if (key === 'name') j.name = readString(v, w);
    else if (key === 'bodyA' || key === 'bodyB') j[key] = readIndex(v, w, bodyCount, 'body');
    else if (key === 'joint1' || key === 'joint2') j[key] = readIndex(v, w, jointCount, 'joint');
    else if (key === 'customProperties') readCustomProperties(v, w, j.properties);
  }
  if (j.bodyB < 0 && type !== 'gear') fail(at, 'a joint needs "bodyB"');
  if (j.bodyA < 0 && type !== 'gear') fail(at, 'a joint needs "bodyA"');
  return j;
}

function checkGear(joints, i, at) {
  const gear = joints[i];
  for (const key of ['joint1', 'joint2']) {
    const other = gear[key];
    if (other < 0) fail(at, `a gear joint needs "${key}"`);
    const t = joints[other].values.type;
    if (other === i || (t !== 'revolute' && t !== 'prismatic')) {
      fail(`${at}/${key}`, `a gear joint couples two revolute or prismatic joints; joint ${other} is ${t}`);
    }
  }
}

function readImage(value, at, bodyCount) {
  requireObject(value, at);
  const image = {
    name: '', file: '', body: -1, center: { x: 0, y: 0 }, angle: 0, scale: 1, aspectScale: 1, opacity: 1,
    flip: false, filter: 1, renderOrder: 0, colorTint: { r: 255, g: 255, b: 255, a: 255 }, corners: null,
    vertexPointer: [], texCoordPointer: [], drawElements: [], properties: new CustomProperties(),
  };
  for (const [key, v] of Object.entries(value)) {
    const w = `${at}/${key}`;
    switch (key) {
      case 'body': image.body = readIndex(v, w, bodyCount, 'body'); break;
      case 'name': image.name = readString(v, w); break;
      case 'file': image.file = readString(v, w); break;
      case 'center': image.center = readVec2(v, w); break;
      case 'angle': case 'scale': case 'aspectScale': case 'opacity': case 'renderOrder':
        image[key] = readFloat(v, w); break;
      case 'flip': image.flip = readBool(v, w); break;
      case 'filter': image.filter = readInt(v, w, INT_MIN, INT_MAX); break;
      case 'colorTint': image.colorTint = readColor(v, w); break;
      case 'corners':
        image.corners = readPointList(v, w);
        if (image.corners.length !== 4) fail(w, `an image has four corners, not ${image.corners.length}`);
        break;
      case 'glVertexPointer': case 'glTexCoordPointer': {
        const target = key === 'glVertexPointer' ? 'vertexPointer' : 'texCoordPointer';
        image[target] = requireArray(v, w).map((x, i) => readFloat(x, `${w}/${i}`));
        break;
      }
      case 'glDrawElements':
        image.drawElements = requireArray(v, w).map((x, i) => readInt(x, `${w}/${i}`, INT_MIN, INT_MAX));
        break;
      case 'customProperties': readCustomProperties(v, w, image.properties); break;
      default: break;
    }
  }
  return image;
}

function readObjectRecord(value, at) {
  requireObject(value, at);
  const o = { name: '', path: '', position: { x: 0, y: 0 }, angle: 0, scale: 1, flip: false,
    properties: new CustomProperties() };
  for (const [key, v] of Object.entries(value)) {
    const w = `${at}/${key}`;
    if (key === 'name' || key === 'path') o[key] = readString(v, w);
    else if (key === 'position') o.position = readVec2(v, w);
    else if (key === 'angle' || key === 'scale') o[key] = readFloat(v, w);
    else if (key === 'flip') o.flip = readBool(v, w);
    else if (key === 'customProperties') readCustomProperties(v, w, o.properties);
  }
  return o;
}

/**
 * Reads raw info, given as JSON text or as an already parsed value, into a
 * scene description: { world, properties, bodies, joints, images, objects }.
 * Throws RawInfoError for malformed input.
 */
export function readRawInfo(json) {
  let root = json;
  if (typeof json === 'string') {
    try {
      root = JSON.parse(json.charCodeAt(0) === 0xfeff ? json.slice(1) : json);
    } catch (e) {
      throw new RawInfoError('/', `not JSON: ${e.message}`);
    }
  }
  requireObject(root, '/');
  const scene = {
    world: {
      gravity: { x: 0, y: -10 }, allowSleep: true, autoClearForces: true, warmStarting: true, continuousPhysics: true,
      subStepping: false, stepsPerSecond: 60, velocityIterations: 8, positionIterations: 3, collisionBitplanes: [],
    },
    properties: new CustomProperties(), bodies: [], joints: [], images: [], objects: [],
  };
  // Bodies first: joints and images refer to them by position, whatever the member order.
  if ('body' in root) scene.bodies = requireArray(root.body, '/body').map((b, i) => readBody(b, `/body/${i}`));
  const w = scene.world;
  for (const [key, v] of Object.entries(root)) {
    const at = `/${key}`;
    switch (key) {
      case 'gravity': w.gravity = readVec2(v, at); break;
      case 'allowSleep': case 'autoClearForces': case 'warmStarting': case 'continuousPhysics': case 'subStepping':
        w[key] = readBool(v, at); break;
      case 'stepsPerSecond': w.stepsPerSecond = readFloat(v, at); break;
      case 'positionIterations': case 'velocityIterations': w[key] = readInt(v, at, 0, 1000000); break;
      case 'collisionbitplanes':
        requireObject(v, at);
        if ('names' in v) w.collisionBitplanes = requireArray(v.names, `${at}/names`).map((n, i) => readString(n, `${at}/names/${i}`));
        break;
      case 'customProperties': readCustomProperties(v, at, scene.properties); break;
      case 'joint': {
        const records = requireArray(v, at);
        scene.joints = records.map((j, i) => readJoint(j, `${at}/${i}`, scene.bodies.length, records.length));
        scene.joints.forEach((j, i) => { if (j.values.type === 'gear') checkGear(scene.joints, i, `${at}/${i}`); });
        break;
      }
      case 'image': scene.images = requireArray(v, at).map((m, i) => readImage(m, `${at}/${i}`, scene.bodies.length)); break;
      case 'object': scene.objects = requireArray(v, at).map((o, i) => readObjectRecord(o, `${at}/${i}`)); break;
      default: break;
    }
  }
  return scene;
}
