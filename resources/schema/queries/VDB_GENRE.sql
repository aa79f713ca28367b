SELECT Name, Genre_ID FROM genre ORDER BY Name
