// The custom properties of one item, with typed getters.

/** The six value types, as written in files. */
export const CUSTOM_PROPERTY_TYPES = Object.freeze(['int', 'float', 'string', 'vec2', 'bool', 'color']);

/**
 * The custom properties of one item in file order. A typed getter gives the
 * first property of that name and type, or the default when there is none (a
 * property of the same name but another type does not count).
 */
export class CustomProperties {
  constructor() {
    /** @type {{name: string, type: string, value: any}[]} */
    this.all = [];
  }

  /** Appends a property (names need not be unique). */
  add(name, type, value) {
    this.all.push({ name, type, value });
  }

  /** True when there are none. */
  get empty() {
    return this.all.length === 0;
  }

  /** The first property of that name whatever its type, or null. */
  find(name) {
    return this.all.find((p) => p.name === name) ?? null;
  }

  /** True when a property of that name and type exists. */
  has(name, type) {
    return this.all.some((p) => p.name === name && p.type === type);
  }

  get(name, type, defaultValue) {
    const p = this.all.find((q) => q.name === name && q.type === type);
    return p ? p.value : defaultValue;
  }

  getInt(name, defaultValue = 0) { return this.get(name, 'int', defaultValue); }
  getFloat(name, defaultValue = 0) { return this.get(name, 'float', defaultValue); }
  getString(name, defaultValue = '') { return this.get(name, 'string', defaultValue); }
  getVec2(name, defaultValue = { x: 0, y: 0 }) { return this.get(name, 'vec2', defaultValue); }
  getBool(name, defaultValue = false) { return this.get(name, 'bool', defaultValue); }
  getColor(name, defaultValue = { r: 255, g: 255, b: 255, a: 255 }) { return this.get(name, 'color', defaultValue); }
}

/** Shared empty set for objects the scene does not know. */
export const NO_PROPERTIES = Object.freeze(new CustomProperties());
