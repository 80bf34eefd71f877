// Exchanges the positions and angles of the two selected bodies.
body[]@ bodies = sb();
body a = bodies[0];
body b = bodies[1];
a.setPosition(b.pos);
a.setAngle(b.angle);
b.setPosition(a.pos);
b.setAngle(a.angle);
