// Moves the selected bodies to the y of the lowest one.
body[]@ bodies = sb();
float y = bodies[0].pos.y;
for (uint i = 1; i < bodies.length(); i++)
    if (bodies[i].pos.y < y)
        y = bodies[i].pos.y;
for (uint i = 0; i < bodies.length(); i++)
    bodies[i].setPosition(bodies[i].pos.x, y);
