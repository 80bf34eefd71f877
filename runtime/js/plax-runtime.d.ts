// Type declarations of the P.L.A.X runtime for JavaScript (plax-runtime.mjs).

import type { Body, Fixture, Joint, Vec2 as PlanckVec2, World } from 'planck';

/** A point or vector in world units. */
export interface Vec2 {
  x: number;
  y: number;
}

/** A colour as four channels 0..255. */
export interface Color {
  r: number;
  g: number;
  b: number;
  a: number;
}

/** The six custom property types, as written in files. */
export type CustomPropertyType = 'int' | 'float' | 'string' | 'vec2' | 'bool' | 'color';
export declare const CUSTOM_PROPERTY_TYPES: readonly CustomPropertyType[];

/** One named custom property. */
export interface CustomProperty {
  name: string;
  type: CustomPropertyType;
  value: number | string | boolean | Vec2 | Color;
}

/**
 * The custom properties of one item in file order. A typed getter gives the
 * first property of that name and type, or the default.
 */
export declare class CustomProperties {
  readonly all: CustomProperty[];
  readonly empty: boolean;
  add(name: string, type: CustomPropertyType, value: CustomProperty['value']): void;
  find(name: string): CustomProperty | null;
  has(name: string, type: CustomPropertyType): boolean;
  getInt(name: string, defaultValue?: number): number;
  getFloat(name: string, defaultValue?: number): number;
  getString(name: string, defaultValue?: string): string;
  getVec2(name: string, defaultValue?: Vec2): Vec2;
  getBool(name: string, defaultValue?: boolean): boolean;
  getColor(name: string, defaultValue?: Color): Color;
}

/** The world settings of a scene. */
export interface WorldSettings {
  gravity: Vec2;
  allowSleep: boolean;
  autoClearForces: boolean;
  warmStarting: boolean;
  continuousPhysics: boolean;
  subStepping: boolean;
  /** The rate the scene was made for. */
  stepsPerSecond: number;
  velocityIterations: number;
  positionIterations: number;
  /** Names of the collision bit planes, bit 0 first. */
  collisionBitplanes: string[];
}

export type ShapeType = 'circle' | 'polygon' | 'edge' | 'chain';

/** A fixture's shape in body coordinates; members of other types are unused. */
export interface ShapeDescription {
  type: ShapeType;
  center: Vec2;
  radius: number;
  /** Polygon and chain vertices; a loop repeats its first vertex at the end. */
  vertices: Vec2[];
  vertex0: Vec2;
  vertex1: Vec2;
  vertex2: Vec2;
  vertex3: Vec2;
  hasVertex0: boolean;
  hasVertex3: boolean;
  prevVertex: Vec2;
  nextVertex: Vec2;
  hasPrevVertex: boolean;
  hasNextVertex: boolean;
}

export interface FixtureDescription {
  name: string;
  friction: number;
  restitution: number;
  density: number;
  sensor: boolean;
  categoryBits: number;
  maskBits: number;
  groupIndex: number;
  shape: ShapeDescription;
  properties: CustomProperties;
}

export interface BodyDescription {
  name: string;
  /** 0 static, 1 kinematic, 2 dynamic. */
  type: 0 | 1 | 2;
  position: Vec2;
  angle: number;
  linearVelocity: Vec2;
  angularVelocity: number;
  linearDamping: number;
  angularDamping: number;
  gravityScale: number;
  bullet: boolean;
  allowSleep: boolean;
  awake: boolean;
  active: boolean;
  fixedRotation: boolean;
  /** The mass the body had when written: applied to dynamic bodies as written. */
  hasMassData: boolean;
  mass: number;
  massCenter: Vec2;
  /** Rotational inertia about the body origin. */
  inertia: number;
  fixtures: FixtureDescription[];
  properties: CustomProperties;
}

export type JointType =
  | 'revolute' | 'prismatic' | 'distance' | 'pulley' | 'mouse' | 'gear' | 'wheel' | 'weld' | 'friction' | 'rope'
  | 'motor';
export declare const JOINT_TYPES: readonly JointType[];

/** A joint's authored values; each type reads its own members. */
export interface JointValues {
  type: JointType;
  collideConnected: boolean;
  anchorA: Vec2;
  anchorB: Vec2;
  referenceAngle: number;
  enableLimit: boolean;
  lowerLimit: number;
  upperLimit: number;
  enableMotor: boolean;
  motorSpeed: number;
  maxMotorTorque: number;
  maxMotorForce: number;
  localAxisA: Vec2;
  length: number;
  frequency: number;
  dampingRatio: number;
  springFrequency: number;
  springDampingRatio: number;
  maxForce: number;
  maxTorque: number;
  maxLength: number;
  correctionFactor: number;
  groundAnchorA: Vec2;
  groundAnchorB: Vec2;
  lengthA: number;
  lengthB: number;
  ratio: number;
  target: Vec2;
}

export interface JointDescription {
  name: string;
  /** Positions in the bodies, -1 for none (a gear joint's come from its joints). */
  bodyA: number;
  bodyB: number;
  /** A gear joint's two joints, as positions in the joints. */
  joint1: number;
  joint2: number;
  values: JointValues;
  properties: CustomProperties;
}

/** One image: everything needed to draw a sprite. */
export interface ImageDescription {
  name: string;
  file: string;
  /** Position in the bodies, or -1 for an image fixed in the world. */
  body: number;
  center: Vec2;
  angle: number;
  /** Height in world units. */
  scale: number;
  aspectScale: number;
  opacity: number;
  flip: boolean;
  /** Texture filtering: 0 nearest, 1 linear. */
  filter: number;
  /** Draw lower values first. */
  renderOrder: number;
  colorTint: Color;
  /** Bottom-left, bottom-right, top-right, top-left in the body's frame; null when not exported. */
  corners: Vec2[] | null;
  vertexPointer: number[];
  /** Texture coordinates of the corners (v = 0 at the image's top row). */
  texCoordPointer: number[];
  drawElements: number[];
  properties: CustomProperties;
}

export interface ObjectDescription {
  name: string;
  path: string;
  position: Vec2;
  angle: number;
  scale: number;
  flip: boolean;
  properties: CustomProperties;
}

/** A whole raw-info file as plain data. */
export interface SceneDescription {
  world: WorldSettings;
  properties: CustomProperties;
  bodies: BodyDescription[];
  joints: JointDescription[];
  images: ImageDescription[];
  objects: ObjectDescription[];
}

/** A raw-info file that cannot be read or built; the message starts with `pointer`. */
export declare class RawInfoError extends Error {
  /** The JSON pointer of the member at fault, like "/body/3/fixture/0/circle/radius". */
  readonly pointer: string;
}

/** Reads raw info (JSON text or a parsed value). Throws RawInfoError. */
export declare function readRawInfo(json: string | object): SceneDescription;
/** True for a chain whose last vertex repeats its first. */
export declare function isLoop(shape: ShapeDescription): boolean;

/** Creates the planck joint of authored joint values, mapped as the editor maps them. */
export declare function createPlanckJoint(
  world: World, values: JointValues, bodyA: Body | null, bodyB: Body | null, joint1?: Joint | null,
  joint2?: Joint | null): Joint | null;

/** A scene built into a planck world, with lookups by name, custom properties and images. */
export declare class PlanckScene {
  static create(scene: SceneDescription): PlanckScene;
  static merge(world: World, scene: SceneDescription, offset?: Vec2): PlanckScene;

  readonly world: World;
  readonly ownsWorld: boolean;
  readonly description: SceneDescription;
  readonly settings: WorldSettings;
  readonly worldProperties: CustomProperties;
  /** Bodies, fixtures and joints in record order. */
  readonly bodies: Body[];
  readonly fixtures: Fixture[];
  readonly joints: (Joint | null)[];
  /** Images in record order, placed by the offset of a merge. */
  readonly images: ImageDescription[];

  /** One step of 1 / stepsPerSecond seconds with the file's iteration counts. */
  step(): void;

  body(name: string): Body | null;
  bodiesNamed(name: string): Body[];
  fixture(name: string): Fixture | null;
  fixturesNamed(name: string): Fixture[];
  joint(name: string): Joint | null;
  jointsNamed(name: string): Joint[];
  image(name: string): ImageDescription | null;
  imagesNamed(name: string): ImageDescription[];

  record(object: Body): BodyDescription | null;
  record(object: Fixture): FixtureDescription | null;
  record(object: Joint): JointDescription | null;
  name(object: Body | Fixture | Joint): string;
  properties(object: Body | Fixture | Joint): CustomProperties;

  imageBody(image: ImageDescription): Body | null;
  imagesOf(body: Body): ImageDescription[];
  /** Corners in world coordinates at the body's current place. */
  imageCorners(image: ImageDescription): PlanckVec2[];
  imagesInRenderOrder(): ImageDescription[];
}

/** Reads raw info and builds it into a new planck world. Throws RawInfoError. */
export declare function loadScene(json: string | object): PlanckScene;
/** Reads raw info and adds it to an existing world at an offset. Throws RawInfoError. */
export declare function mergeScene(world: World, json: string | object, offset?: Vec2): PlanckScene;
