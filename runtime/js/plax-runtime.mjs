// The P.L.A.X runtime for JavaScript: loads raw-info JSON exported by the
// editor into planck.js worlds.
//
//     import { loadScene } from '@plax/runtime';
//     const scene = loadScene(await (await fetch('level.json')).text());
//     const hero = scene.body('hero');
//     const lives = scene.properties(hero).getInt('lives', 3);
//     setInterval(() => scene.step(), 1000 / scene.settings.stepsPerSecond);

import { PlanckScene } from './src/planckscene.mjs';
import { readRawInfo } from './src/reader.mjs';

export { CustomProperties, CUSTOM_PROPERTY_TYPES } from './src/customproperties.mjs';
export { createPlanckJoint, PlanckScene } from './src/planckscene.mjs';
export { isLoop, JOINT_TYPES, RawInfoError, readRawInfo } from './src/reader.mjs';

/**
 * Reads raw info (JSON text or a parsed value) and builds it into a new
 * planck world. Throws RawInfoError naming the member at fault.
 */
export function loadScene(json) {
  return PlanckScene.create(readRawInfo(json));
}

/**
 * Reads raw info and adds it to an existing planck world, translated by
 * `offset`. Throws RawInfoError naming the member at fault; nothing is added then.
 */
export function mergeScene(world, json, offset = { x: 0, y: 0 }) {
  return PlanckScene.merge(world, readRawInfo(json), offset);
}
