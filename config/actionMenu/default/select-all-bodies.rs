// Selects every body of the scene.
select(ab());
