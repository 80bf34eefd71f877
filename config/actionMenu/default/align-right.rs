// Moves the selected bodies to the x of the rightmost one.
body[]@ bodies = sb();
float x = bodies[0].pos.x;
for (uint i = 1; i < bodies.length(); i++)
    if (bodies[i].pos.x > x)
        x = bodies[i].pos.x;
for (uint i = 0; i < bodies.length(); i++)
    bodies[i].setPosition(x, bodies[i].pos.y);
