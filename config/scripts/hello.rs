// A first script: prints the bodies of the scene and turns the selected ones.
// Run it with F5 (the whole script) or select lines and press Ctrl+F5.
body[]@ bodies = ab();
print("The scene has " + bodies.length() + " bodies");
for (uint i = 0; i < bodies.length(); i++)
    print(bodies[i].getName() + " at " + bodies[i].pos);

body[]@ selected = sb();
for (uint i = 0; i < selected.length(); i++)
    selected[i].setAngle(selected[i].angle + dr(15));
