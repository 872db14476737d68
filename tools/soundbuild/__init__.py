"""Turns the sources in sound/ into Ogg files; tools/build_sound.py is the way in."""
